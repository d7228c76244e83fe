// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The second half of XmlDesignReader: what an element leaves to its parent when it ends.

#include "netlist/pathname.h"
#include "netlist/xmldesignreader.h"

namespace Standin {

void XmlDesignReader::endElement()
{
    Frame frame = frames.back();
    frames.pop_back();
    close(&frame);
    if (frame.ownsLoopCondition)
        writer.endLoopCondition();
    if (frames.empty())
        return;
    Frame &parent = frames.back();
    deliver(&parent, frame);
    const bool carriesValue = frame.tag != XmlTag::Comparison && frame.tag != XmlTag::Call
        && frame.tag != XmlTag::Argument;
    parent.letsGo = parent.letsGo || (carriesValue && frame.letsGo);
    ++parent.children;
}

void XmlDesignReader::close(Frame *frame)
{
    switch (frame->tag) {
    case XmlTag::Begin:
        readOperands(frame->operands);
        if (frame->ownsScope)
            writer.closeScope();
        break;
    case XmlTag::Always:
    case XmlTag::Initial:
    case XmlTag::Final:
    case XmlTag::Function:
        readOperands(frame->operands);
        if (frame->ownsScope)
            writer.closeScope();
        writer.closeProcess();
        break;
    case XmlTag::Port:
        finishPort(*frame);
        break;
    case XmlTag::Instance:
        instanceIsOpen = false;
        operands.resize(frame->operands);
        writer.addInstance(std::move(instance));
        break;
    case XmlTag::Range:
        operands.resize(frame->operands);
        finishRange();
        break;
    case XmlTag::Module:
    case XmlTag::Interface:
    case XmlTag::Primitive:
    case XmlTag::Package:
        readOperands(frame->operands);
        finishModule();
        break;
    case XmlTag::Var:
        operands.resize(frame->operands);
        break;
    default:
        if (definesType(frame->tag)) {
            operands.resize(frame->operands);
            design->types.add(frame->name, type);
        } else if (writer.isOpen()) {
            finishOperand(frame);
        }
        break;
    }
}

void XmlDesignReader::finishOperand(Frame *frame)
{
    const auto end = quint32(operands.size());
    switch (frame->tag) {
    case XmlTag::VarRef:
    case XmlTag::VarXRef:
    case XmlTag::Const:
    case XmlTag::Concat:
        break;
    case XmlTag::Extend: {
        // Zeros stand ahead of the operand.
        if (end - frame->operands != 1)
            replaceOperands(frame->operands);
        RawSegment zeros;
        zeros.kind = RawSegment::Constant;
        zeros.width = qint32(qBound(qint64(0), frame->value, ModuleDefinition::MaximumSize));
        operands.insert(operands.end() - 1, zeros);
        break;
    }
    case XmlTag::Sel:
    case XmlTag::ArraySel:
        if (!singleReference(frame->operands, end))
            replaceOperands(frame->operands);
        break;
    case XmlTag::StructSel:
        if (RawSegment *operand = singleReference(frame->operands, end))
            operand->exact = false;
        else
            replaceOperands(frame->operands);
        break;
    case XmlTag::Operator:
    case XmlTag::Comparison:
    case XmlTag::LettingGo:
    case XmlTag::Call:
        replaceOperands(frame->operands);
        break;
    case XmlTag::Argument:
        finishArgument(*frame);
        break;
    case XmlTag::SenItem:
        if (const RawSegment *clock = singleReference(frame->operands, end)) {
            if (frame->isExact)
                writer.addEdge(*clock);
            else
                writer.read(*clock);
        }
        operands.resize(frame->operands);
        break;
    case XmlTag::Pull:
        if (const RawSegment *net = singleReference(frame->operands, end)) {
            writer.add(*net, RawFact::Maybe);
            writer.add(*net, RawFact::TriState);
        }
        operands.resize(frame->operands);
        break;
    default:
        readOperands(frame->operands);
        break;
    }
}

void XmlDesignReader::finishArgument(const Frame &frame)
{
    const Frame &call = frames.back();
    if (const RawSegment *operand = singleReference(frame.operands, quint32(operands.size()))) {
        if (call.tag == XmlTag::Call)
            module.arguments.push_back({call.name, call.children, *operand});
    }
    readOperands(frame.operands);
}

void XmlDesignReader::finishPort(const Frame &frame)
{
    RawConnection &connection = instance.connections.back();
    connection.firstSegment = quint32(module.segments.size());
    connection.segmentCount = quint32(operands.size()) - frame.operands;
    module.segments.insert(module.segments.end(), operands.begin() + frame.operands,
                           operands.end());
    operands.resize(frame.operands);
}

void XmlDesignReader::finishRange()
{
    if (rangeBounds.size() != 2)
        return;
    const Range range{rangeBounds[0], rangeBounds[1]};
    if (frames.empty())
        return;
    if (frames.back().tag == XmlTag::Instance) {
        instance.isArray = true;
        instance.range = range;
    } else {
        type.range = range;
    }
}

void XmlDesignReader::deliver(Frame *parent, const Frame &child)
{
    switch (parent->tag) {
    case XmlTag::Sel:
        deliverToSelection(parent, child);
        break;
    case XmlTag::ArraySel:
        deliverToElementSelection(parent, child);
        break;
    case XmlTag::Assign:
        deliverToAssignment(parent);
        break;
    case XmlTag::Range:
        if (child.tag == XmlTag::Const)
            rangeBounds.push_back(qint32(quint32(child.value)));
        break;
    case XmlTag::Var:
        if (child.tag == XmlTag::Const && !child.letsGo && parent->isExact)
            module.variables.back().hasConstant = true;
        break;
    default:
        break;
    }
}

// The children are what is selected from, the offset, and the width.
void XmlDesignReader::deliverToSelection(Frame *parent, const Frame &child)
{
    if (parent->children == 0) {
        parent->second = quint32(operands.size());
        return;
    }
    const bool isConstant = child.tag == XmlTag::Const && child.value >= 0
        && child.value <= ModuleDefinition::MaximumSize;
    readOperands(parent->second);
    if (parent->children == 1) {
        parent->isExact = isConstant;
        parent->value = child.value;
        return;
    }
    RawSegment *operand = singleReference(parent->operands, parent->second);
    if (parent->children != 2 || !operand || !operand->exact)
        return;
    if (!parent->isExact || !isConstant || child.value == 0
        || operand->lsb + parent->value > ModuleDefinition::MaximumSize) {
        operand->exact = false;
        return;
    }
    operand->lsb += qint32(parent->value);
    operand->width = qint32(child.value);
}

// The children are what is selected from, and the index counted from the lowest.
void XmlDesignReader::deliverToElementSelection(Frame *parent, const Frame &child)
{
    if (parent->children == 0) {
        parent->second = quint32(operands.size());
        return;
    }
    readOperands(parent->second);
    RawSegment *operand = singleReference(parent->operands, parent->second);
    if (!operand || !operand->exact)
        return;
    const bool isConstant = child.tag == XmlTag::Const && child.value >= 0
        && child.value <= ModuleDefinition::MaximumSize;
    if (isConstant && operand->width < 0 && operand->lsb == 0)
        writer.selectElement(operand, qint32(child.value));
    else
        operand->exact = false;
}

// The children are the value and the target; a delay or a strength may follow.
void XmlDesignReader::deliverToAssignment(Frame *parent)
{
    if (parent->children == 0) {
        parent->second = quint32(operands.size());
        return;
    }
    if (parent->children == 1) {
        const RawSegment *first = operands.data() + parent->operands;
        const RawSegment *second = operands.data() + parent->second;
        const RawSegment *end = operands.data() + operands.size();
        writer.assign({second, end}, {first, second}, parent->letsGo);
        operands.resize(parent->second);
    }
    readOperands(parent->operands);
}

void XmlDesignReader::readOperands(quint32 from)
{
    for (std::size_t i = from; i < operands.size(); ++i)
        writer.read(operands[i]);
    operands.resize(from);
}

void XmlDesignReader::replaceOperands(quint32 from)
{
    readOperands(from);
    operands.emplace_back();
}

RawSegment *XmlDesignReader::singleReference(quint32 from, quint32 to)
{
    if (to != from + 1 || operands[from].kind != RawSegment::Reference)
        return nullptr;
    return &operands[from];
}

static int digitValue(QChar digit)
{
    const ushort c = digit.unicode();
    if (c >= '0' && c <= '9')
        return c - '0';
    const int letter = (c | 0x20) - 'a';
    return letter >= 0 && letter < 6 ? letter + 10 : -1;
}

VerilogConstant parseVerilogConstant(QStringView text)
{
    VerilogConstant constant;
    const auto quote = text.indexOf(QLatin1Char('\''));
    if (quote <= 0 || quote > 9)
        return constant;
    qint32 width = 0;
    for (QChar c : text.left(quote)) {
        const int digit = digitValue(c);
        if (digit < 0 || digit > 9)
            return constant;
        width = width * 10 + digit;
    }
    QStringView rest = text.mid(quote + 1);
    if (rest.startsWith(QLatin1Char('s')))
        rest = rest.mid(1);
    if (rest.isEmpty())
        return constant;
    const char base = rest.at(0).toLatin1();
    const quint64 factor = base == 'h' ? 16 : base == 'd' ? 10 : base == 'o' ? 8 : 2;
    for (QChar c : rest.mid(1)) {
        const int digit = digitValue(c);
        constant.hasZ = constant.hasZ || c == QLatin1Char('z') || c == QLatin1Char('Z');
        constant.value = constant.value * factor + quint64(qMax(0, digit));
    }
    constant.width = width;
    return constant;
}

QString decodedName(QStringView name)
{
    const QByteArray coded = name.toUtf8();
    QByteArray decoded;
    decoded.reserve(coded.size());
    for (int i = 0; i < coded.size(); ++i) {
        if (coded.size() - i >= 5 && qstrncmp(coded.constData() + i, "__0", 3) == 0) {
            const int high = digitValue(QLatin1Char(coded.at(i + 3)));
            const int low = digitValue(QLatin1Char(coded.at(i + 4)));
            if (high >= 0 && low >= 0) {
                decoded += char(high * 16 + low);
                i += 4;
                continue;
            }
        }
        decoded += coded.at(i);
    }
    return textOfName(decoded);
}

} // namespace Standin
