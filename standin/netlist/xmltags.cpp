// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/xmltags.h"

#include <iterator>

namespace Standin {

struct NamedTag
{
    const char *name;
    XmlTag tag;
};

static const NamedTag namedTags[] = {
    {"varref", XmlTag::VarRef},
    {"varxref", XmlTag::VarXRef},
    {"const", XmlTag::Const},
    {"sel", XmlTag::Sel},
    {"arraysel", XmlTag::ArraySel},
    {"structsel", XmlTag::StructSel},
    {"concat", XmlTag::Concat},
    {"extend", XmlTag::Extend},
    {"contassign", XmlTag::Assign},
    {"assign", XmlTag::Assign},
    {"assigndly", XmlTag::Assign},
    {"assignalias", XmlTag::Assign},
    {"assignforce", XmlTag::Assign},
    {"begin", XmlTag::Begin},
    {"while", XmlTag::While},
    {"var", XmlTag::Var},
    {"port", XmlTag::Port},
    {"instance", XmlTag::Instance},
    {"range", XmlTag::Range},
    {"senitem", XmlTag::SenItem},
    {"bufif1", XmlTag::LettingGo},
    {"pull", XmlTag::Pull},
    {"eq", XmlTag::Comparison},
    {"neq", XmlTag::Comparison},
    {"eqcase", XmlTag::Comparison},
    {"neqcase", XmlTag::Comparison},
    {"eqwild", XmlTag::Comparison},
    {"neqwild", XmlTag::Comparison},
    {"taskref", XmlTag::Call},
    {"funcref", XmlTag::Call},
    {"arg", XmlTag::Argument},
    {"always", XmlTag::Always},
    {"alwayspublic", XmlTag::Always},
    {"initial", XmlTag::Initial},
    {"initialstatic", XmlTag::Initial},
    {"initialautomatic", XmlTag::Initial},
    {"final", XmlTag::Final},
    {"func", XmlTag::Function},
    {"task", XmlTag::Function},
    {"module", XmlTag::Module},
    {"iface", XmlTag::Interface},
    {"primitive", XmlTag::Primitive},
    {"package", XmlTag::Package},
    {"basicdtype", XmlTag::BasicType},
    {"refdtype", XmlTag::AliasType},
    {"enumdtype", XmlTag::AliasType},
    {"constdtype", XmlTag::AliasType},
    {"paramtypedtype", XmlTag::AliasType},
    {"structdtype", XmlTag::StructType},
    {"uniondtype", XmlTag::UnionType},
    {"packarraydtype", XmlTag::PackedType},
    {"unpackarraydtype", XmlTag::UnpackedType},
    {"memberdtype", XmlTag::MemberType},
    {"file", XmlTag::File},
    {"verilator_xml", XmlTag::Root},
    {"files", XmlTag::Transparent},
    {"netlist", XmlTag::Transparent},
    {"typetable", XmlTag::Transparent},
    {"module_files", XmlTag::Skipped},
    {"cells", XmlTag::Skipped},
    {"typedef", XmlTag::Skipped},
    {"modport", XmlTag::Skipped},
    {"class", XmlTag::Skipped},
    {"enumitem", XmlTag::Skipped},
};

XmlTags::XmlTags()
{
    for (const NamedTag &named : namedTags)
        names.intern(QString::fromLatin1(named.name));
}

XmlTag XmlTags::tag(QStringView name)
{
    const quint32 number = names.intern(name);
    if (number < std::size(namedTags))
        return namedTags[number].tag;
    return name.endsWith(QLatin1String("dtype")) ? XmlTag::OtherType : XmlTag::Operator;
}

} // namespace Standin
