// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/rawmodulewriter.h"
#include "netlist/tagreader.h"
#include "netlist/xmltags.h"

class QIODevice;

namespace Standin {

/// Turns the XML text of an elaborated design into a RawDesign, in one pass.
///
/// Operands are evaluated on a stack: an element leaves on it what it refers to, and its parent
/// takes that as read, written, selected from, or connected. The stack is ours, so that no depth of
/// the text can overflow the program's.
class XmlDesignReader
{
public:
    /// \return false if the text isn't well-formed or isn't a design; errorText() says why and
    ///         where, as "line:column: text".
    bool read(QIODevice *device, RawDesign *result);

    QString errorText() const { return failure; }

private:
    // An element that is open.
    struct Frame
    {
        XmlTag tag = XmlTag::Operator;
        bool letsGo = false; ///< An operand below may be high impedance.
        bool isExact =
            false; ///< The offset is a constant, the event an edge, the variable a new one.
        bool ownsScope = false;
        bool ownsLoopCondition = false;
        quint32 children = 0;
        quint32 operands = 0; ///< Where the operands of this element begin on the stack.
        quint32 second = 0;   ///< Where those of the second child begin.
        quint32 name = 0;
        qint64 value = 0; ///< Of a constant; of a selection its offset.
    };

    bool startElement();
    bool open(Frame *frame);
    bool isSkipped(XmlTag tag) const;
    void startModule(RawModule::Kind kind);
    void startVariable(Frame *frame, const Frame &parent);
    void startInstance();
    void startPort();
    void startConstant(Frame *frame);
    void startType(Frame *frame);

    void endElement();
    void close(Frame *frame);
    void finishOperand(Frame *frame);
    void finishArgument(const Frame &frame);
    void finishPort(const Frame &frame);
    void finishRange();
    void finishModule();
    void deliver(Frame *parent, const Frame &child);
    void deliverToSelection(Frame *parent, const Frame &child);
    void deliverToElementSelection(Frame *parent, const Frame &child);
    void deliverToAssignment(Frame *parent);

    void readOperands(quint32 from);
    void replaceOperands(quint32 from);
    RawSegment *singleReference(quint32 from, quint32 to);
    bool fail(const QString &text);
    QStringRef attribute(const char *name) const;
    quint32 internAttribute(const char *name);
    QString sourceName() const;
    PortDirection direction(const char *name) const;

    TagReader *xml = nullptr;
    XmlTags tags;
    RawDesign *design = nullptr;
    RawModuleWriter writer;
    RawModule module;
    RawInstance instance;
    bool instanceIsOpen = false;
    XmlTypes::Type type;
    std::vector<Frame> frames;
    std::vector<RawSegment> operands;
    std::vector<qint32> rangeBounds;
    QString failure;
};

/// The text of a Verilog constant: `8'hff`, `32'sh3`, `1'bz`.
struct VerilogConstant
{
    qint32 width = -1; ///< -1 if the text is no such constant.
    quint64 value = 0; ///< The lowest 64 bits.
    bool hasZ = false;
};
VerilogConstant parseVerilogConstant(QStringView text);

/// Takes back the way in which characters that aren't allowed in names are written: `__02e` is a
/// full stop.
QString decodedName(QStringView name);

} // namespace Standin
