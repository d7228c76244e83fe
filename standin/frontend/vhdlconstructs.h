// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/vhdltokens.h"

#include <QByteArray>

#include <vector>

namespace Standin {

/// A part of a VHDL text that can be taken out: a unit, a declaration, a statement, an element of a
/// list of ports or generics.
struct VhdlConstruct
{
    enum Kind {
        Context,   ///< A library or use clause.
        Unit,      ///< An entity, architecture, package or the like, without its context.
        Leaf,      ///< A declaration or statement that contains no other.
        Instance,  ///< A leaf that instantiates something.
        Region,    ///< A block or generate statement.
        Process,   ///< A process.
        Statement, ///< A condition, loop or selection in a process or subprogram.
        Compound,  ///< A subprogram, component, record and the like.
        List,      ///< A clause of ports or generics.
        Element,   ///< One element of a list.
        Branch,    ///< What leads to another branch of its parent.
    };

    Kind kind;
    int begin;  ///< Index of its first token.
    int header; ///< Index behind its first line, for what contains others.
    int end;    ///< Index behind its last token.
    int parent; ///< Index of the construct that contains it, or -1.
    int body;   ///< Index of the "begin" that is its own, or -1.
};

/// A design unit as one of the constructs.
struct VhdlUnit
{
    enum Kind { Entity, Architecture, Package, PackageBody, Configuration, ContextDeclaration };

    Kind kind;
    int construct;
    int begin;       ///< Index of the first token of its context clauses.
    QByteArray name; ///< In lower case.
    QByteArray of;   ///< The entity of an architecture or configuration, in lower case.
};

/// The parts of a VHDL text, in order of their first tokens.
///
/// Faulty text is divided as well as can be: a statement that isn't ended ends where the next block
/// does, and a unit where the next one begins.
class HOST_EXPORT VhdlConstructs
{
public:
    /// \param text must outlive the object.
    explicit VhdlConstructs(const VhdlTokens &text);

    const std::vector<VhdlConstruct> &all() const { return constructs; }
    const std::vector<VhdlUnit> &units() const { return designUnits; }

    /// Index of the innermost construct that holds \a token; -1 if none does.
    int innermost(int token) const;

    /// Index of the last child of \a construct that ends at or before \a token; -1 if there is
    /// none.
    int childBefore(int construct, int token) const;

private:
    class Reader;

    std::vector<VhdlConstruct> constructs;
    std::vector<VhdlUnit> designUnits;
};

} // namespace Standin
