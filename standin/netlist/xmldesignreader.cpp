// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/xmldesignreader.h"

#include <QIODevice>

namespace Standin {

bool XmlDesignReader::fail(const QString &text)
{
    failure = QStringLiteral("%1:%2: %3").arg(xml->line()).arg(xml->column()).arg(text);
    return false;
}

bool XmlDesignReader::read(QIODevice *device, RawDesign *result)
{
    design = result;
    TagReader reader(device);
    xml = &reader;
    for (TagReader::Token token = reader.next(); token != TagReader::Stop; token = reader.next()) {
        if (token == TagReader::End)
            endElement();
        else if (!startElement())
            return false;
    }
    if (reader.hasError())
        return fail(reader.errorText());
    if (design->top < 0)
        return fail(QStringLiteral("The design has no top module"));
    return true;
}

bool XmlDesignReader::startElement()
{
    Frame frame;
    frame.tag = tags.tag(xml->name());
    if (frames.empty() != (frame.tag == XmlTag::Root))
        return fail(QStringLiteral("This is not an elaborated design of Verilator"));
    if (isSkipped(frame.tag)) {
        xml->skipElement();
        return true;
    }

    frame.operands = quint32(operands.size());
    if (writer.isOpen()) {
        const Frame &parent = frames.back();
        frame.ownsLoopCondition = parent.tag == XmlTag::While && parent.children == 1;
        if (frame.ownsLoopCondition)
            writer.beginLoopCondition();
    }
    const bool ok = open(&frame);
    frames.push_back(frame);
    return ok || fail(QStringLiteral("Blocks are nested too deeply"));
}

// What belongs in a module is passed over elsewhere, and so is a module within another.
bool XmlDesignReader::isSkipped(XmlTag tag) const
{
    if (definesType(tag))
        return writer.isOpen();
    switch (tag) {
    case XmlTag::Root:
    case XmlTag::Const:
    case XmlTag::Range:
        return false;
    case XmlTag::Skipped:
        return true;
    case XmlTag::Transparent:
    case XmlTag::File:
    case XmlTag::Module:
    case XmlTag::Interface:
    case XmlTag::Primitive:
    case XmlTag::Package:
    case XmlTag::MemberType:
        return writer.isOpen();
    case XmlTag::Always:
    case XmlTag::Initial:
    case XmlTag::Final:
    case XmlTag::Function:
    case XmlTag::Instance:
        return !writer.isOpen() || writer.inProcess() || instanceIsOpen;
    case XmlTag::Port:
        return !instanceIsOpen || frames.back().tag != XmlTag::Instance;
    default:
        return !writer.isOpen();
    }
}

bool XmlDesignReader::open(Frame *frame)
{
    switch (frame->tag) {
    case XmlTag::VarRef:
        operands.push_back(writer.reference(internAttribute("name")));
        break;
    case XmlTag::VarXRef: {
        const quint32 dotted = internAttribute("dotted");
        operands.push_back(writer.externalReference(dotted, internAttribute("name")));
        break;
    }
    case XmlTag::Const:
        startConstant(frame);
        break;
    case XmlTag::Extend:
        frame->value = attribute("width").toInt() - attribute("widthminv").toInt();
        break;
    case XmlTag::LettingGo:
        frame->letsGo = true;
        break;
    case XmlTag::Call:
        frame->name = internAttribute("name");
        break;
    case XmlTag::Begin:
        // Without a name it declares nothing.
        frame->ownsScope = !attribute("name").isEmpty();
        return !frame->ownsScope || writer.openScope(internAttribute("name"));
    case XmlTag::Function:
        frame->name = internAttribute("name");
        frame->ownsScope = true;
        writer.openProcess(RawModuleWriter::Function);
        return writer.openScope(frame->name);
    case XmlTag::Always:
        writer.openProcess(RawModuleWriter::Always);
        break;
    case XmlTag::Initial:
        writer.openProcess(RawModuleWriter::Initial);
        break;
    case XmlTag::Final:
        writer.openProcess(RawModuleWriter::Final);
        break;
    case XmlTag::Var:
        startVariable(frame, frames.back());
        break;
    case XmlTag::Instance:
        startInstance();
        break;
    case XmlTag::Port:
        startPort();
        break;
    case XmlTag::Range:
        rangeBounds.clear();
        break;
    case XmlTag::SenItem: {
        const QStringRef edge = attribute("edgeType");
        frame->isExact = edge == QLatin1String("POS") || edge == QLatin1String("NEG")
            || edge == QLatin1String("BOTH") || edge == QLatin1String("EDGE");
        break;
    }
    case XmlTag::Module:
        startModule(RawModule::Module);
        break;
    case XmlTag::Interface:
        startModule(RawModule::Interface);
        break;
    case XmlTag::Primitive:
        startModule(RawModule::Primitive);
        break;
    case XmlTag::Package:
        startModule(RawModule::Package);
        break;
    case XmlTag::File:
        design->files.insert(internAttribute("id"), attribute("filename").toString());
        break;
    case XmlTag::MemberType:
        type.members.append(internAttribute("sub_dtype_id"));
        break;
    default:
        if (definesType(frame->tag))
            startType(frame);
        break;
    }
    return true;
}

void XmlDesignReader::startModule(RawModule::Kind kind)
{
    module = RawModule();
    module.kind = kind;
    module.name = internAttribute("name");
    module.sourceName = sourceName();
    const QStringRef place = attribute("loc");
    module.file = design->names.intern(place.left(qMax(0, place.indexOf(QLatin1Char(',')))));
    if (!attribute("topModule").isEmpty() && kind == RawModule::Module)
        design->top = int(design->modules.size());
    writer.begin(&module, &design->paths);
}

void XmlDesignReader::finishModule()
{
    writer.finish();
    if (module.kind == RawModule::Package) {
        for (auto function = module.functions.cbegin(); function != module.functions.cend();
             ++function)
            design->packageFunctions.insert(function.key(), function.value());
        return;
    }
    design->modules.push_back(std::move(module));
}

void XmlDesignReader::startVariable(Frame *frame, const Frame &parent)
{
    RawVariable variable;
    variable.name = internAttribute("name");
    if (attribute("origName") != attribute("name"))
        variable.sourceName = sourceName();
    variable.type = internAttribute("dtype_id");
    variable.direction = direction("dir");
    variable.pin = attribute("pinIndex").toInt();
    variable.isParameter = !attribute("param").isEmpty() || !attribute("localparam").isEmpty();
    const QStringRef kind = attribute("vartype");
    variable.isInterface = kind == QLatin1String("ifaceref");
    variable.isInteger = kind == QLatin1String("integer") || kind == QLatin1String("int")
        || kind == QLatin1String("genvar");
    // A function's own name is where it leaves its result.
    if (parent.tag == XmlTag::Function && variable.direction != PortDirection::None
        && variable.name != parent.name)
        writer.addFunctionPort(parent.name, variable.direction);
    frame->isExact = writer.addVariable(std::move(variable));
}

void XmlDesignReader::startInstance()
{
    instance = RawInstance();
    instance.name = internAttribute("name");
    instance.sourceName = sourceName();
    // The module itself goes by its plain name.
    const QStringRef definition = attribute("defName");
    instance.module = definition.contains(QLatin1String("__0"))
        ? design->names.intern(decodedName(definition))
        : design->names.intern(definition);
    instanceIsOpen = true;
}

void XmlDesignReader::startPort()
{
    RawConnection connection{};
    connection.port = internAttribute("name");
    connection.pin = attribute("portIndex").toInt();
    connection.direction = direction("direction");
    instance.connections.push_back(connection);
}

void XmlDesignReader::startConstant(Frame *frame)
{
    const VerilogConstant constant = parseVerilogConstant(attribute("name"));
    frame->value = qint64(constant.value);
    frame->letsGo = constant.hasZ;
    RawSegment operand;
    operand.kind = constant.width < 0 ? RawSegment::Other : RawSegment::Constant;
    operand.width = constant.width;
    operands.push_back(operand);
}

static bool hasBits(const QStringRef &basicType)
{
    static const QLatin1String names[] = {
        QLatin1String("logic"),   QLatin1String("bit"),           QLatin1String("integer"),
        QLatin1String("int"),     QLatin1String("byte"),          QLatin1String("shortint"),
        QLatin1String("longint"), QLatin1String("LOGIC_IMPLICIT")};
    return std::find(std::begin(names), std::end(names), basicType) != std::end(names);
}

static XmlTypes::Type::Kind typeKind(XmlTag tag)
{
    switch (tag) {
    case XmlTag::BasicType:
        return XmlTypes::Type::Basic;
    case XmlTag::AliasType:
        return XmlTypes::Type::Alias;
    case XmlTag::StructType:
        return XmlTypes::Type::Struct;
    case XmlTag::UnionType:
        return XmlTypes::Type::Union;
    case XmlTag::PackedType:
        return XmlTypes::Type::Packed;
    case XmlTag::UnpackedType:
        return XmlTypes::Type::Unpacked;
    default:
        return XmlTypes::Type::NoBits;
    }
}

void XmlDesignReader::startType(Frame *frame)
{
    frame->name = internAttribute("id");
    type = XmlTypes::Type();
    type.element = internAttribute("sub_dtype_id");
    if (frame->tag == XmlTag::BasicType && !hasBits(attribute("name")))
        return;
    type.kind = typeKind(frame->tag);
    if (type.kind == XmlTypes::Type::Basic) {
        type.hasRange = !attribute("left").isEmpty();
        type.range = {attribute("left").toInt(), attribute("right").toInt()};
    }
}

QStringRef XmlDesignReader::attribute(const char *name) const
{
    return xml->attribute(QLatin1String(name));
}

quint32 XmlDesignReader::internAttribute(const char *name)
{
    return design->names.intern(attribute(name));
}

QString XmlDesignReader::sourceName() const
{
    const QStringRef name = attribute("name");
    const QStringRef original = attribute("origName");
    return original.isEmpty() || original == name ? name.toString() : decodedName(original);
}

PortDirection XmlDesignReader::direction(const char *name) const
{
    const QStringRef text = attribute(name);
    if (text.startsWith(QLatin1String("inout")) || text.endsWith(QLatin1String("ref")))
        return PortDirection::InOut;
    if (text.startsWith(QLatin1String("in")))
        return PortDirection::In;
    return text.startsWith(QLatin1String("out")) ? PortDirection::Out : PortDirection::None;
}

} // namespace Standin
