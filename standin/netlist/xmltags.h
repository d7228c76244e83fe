// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/stringinterner.h"

namespace Standin {

/// The elements of an elaborated design's text that mean something for its nets.
enum class XmlTag : quint8 {
    // Operands.
    VarRef,
    VarXRef,
    Const,
    Sel,
    ArraySel,
    StructSel,
    Concat,
    Extend,
    Operator, ///< Any element that isn't known: it reads its operands.
    Comparison,
    LettingGo,
    Call,
    Argument,

    // Statements and items.
    Assign,
    Begin,
    While,
    SenItem,
    Pull,
    Var,
    Port,
    Instance,
    Range,
    Always,
    Initial,
    Final,
    Function,
    Module,
    Interface,
    Primitive,
    Package,

    // Types, see definesType().
    BasicType,
    AliasType,
    StructType,
    UnionType,
    PackedType,
    UnpackedType,
    OtherType,
    MemberType,

    Root,
    File,
    Transparent, ///< Only what it contains counts.
    Skipped,
};

/// Whether an element with \a tag defines a type that stands by itself. A member of a structure is
/// part of the type around it.
constexpr bool definesType(XmlTag tag)
{
    return tag >= XmlTag::BasicType && tag <= XmlTag::OtherType;
}

/// Tells elements apart by their names.
class XmlTags
{
public:
    XmlTags();

    XmlTag tag(QStringView name);

private:
    StringInterner names;
};

} // namespace Standin
