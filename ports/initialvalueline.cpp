// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "initialvalueline.h"

#include "initialvalue.h"
#include "modal.h"
#include "probeportsoptionwidget.h"
#include "retirement.h"
#include "valueconversion.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QRegExpValidator>

namespace MOLK {

InitialValueLine::InitialValueLine(int number, ProbePortsOptionWidget *page, QWidget *parent)
    : QLineEdit(parent)
    , index(number)
    , owner(page)
{
    connect(this, SIGNAL(editingFinished()), this, SLOT(onTextChange()));
    setContextMenuPolicy(Qt::NoContextMenu);
    setFixedHeight(20);
    validator = new QRegExpValidator(this);
    updateInputMask();
    setText("0x0");
    installEventFilter(this);
}

InitialValueLine::~InitialValueLine()
{
    deleteLabels();
}

bool InitialValueLine::event(QEvent *event)
{
    // The message stands in the midst of a change of the focus, which goes on with this line.
    if (event->type() == QEvent::DeferredDelete && asking) {
        doomed = true;
        // The labels are on their way out, too, and this line goes ahead of them.
        deleteLabels();
        return true;
    }
    if (event->type() == QEvent::FocusOut) {
        const QPointer<InitialValueLine> self = this;
        onTextChange();
        if (!self)
            return true;
    }

    // What QLineEdit::event() does on top isn't wanted here: shortcuts of the window stay ahead of
    // the line's keys.
    return QWidget::event(event); // NOLINT(bugprone-parent-virtual-call)
}

bool InitialValueLine::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::FocusOut) {
        const QPointer<InitialValueLine> self = this;
        onTextChange();
        if (!self)
            return true;
    }
    return QObject::eventFilter(watched, event);
}

int InitialValueLine::bitCount() const
{
    int count = 0;
    for (const QLabel *label : labels)
        count += label->text().size();
    return count;
}

QString InitialValueLine::bitString() const
{
    QString bits;
    for (const QLabel *label : labels)
        bits += label->text();
    return bits;
}

void InitialValueLine::deleteLabels()
{
    qDeleteAll(labels);
    labels.clear();
}

void InitialValueLine::updateInputMask()
{
    updateInputMask(bitCount());
}

void InitialValueLine::updateInputMask(int bitCount)
{
    // The same mask would only be built again.
    const QString mask = valueMask(bitCount);
    if (mask == inputMask())
        return;
    const QString shown = displayText();

    // One digit is never the whole text, so the text is never acceptable. That keeps Return from
    // committing: only the loss of the focus does.
    validator->setRegExp(QRegExp("[A-F0-9]", Qt::CaseSensitive, QRegExp::RegExp));
    setInputMask("");
    setInputMask(mask);
    setValidator(validator);
    setText(shown);
}

void InitialValueLine::keyPressEvent(QKeyEvent *event)
{
    if (!keySparesPrefix(selectionStart(), hasSelectedText(), cursorPosition(), event->key()))
        return;

    if (owner)
        emit owner->modified();
    QLineEdit::keyPressEvent(event);
}

void InitialValueLine::onTextChange()
{
    if (asking || isRetired(this))
        return;
    const QString typed = displayText();
    const QString bits = stringHextoBinfor0x(typed);
    const int width = bitCount();
    if (effectiveWidth(bits) > width) {
        rejectText(typed.mid(2));
        return;
    }

    const QString fitted = fittedBits(bits, width);
    int position = 0;
    for (QLabel *label : qAsConst(labels))
        label->setText(takeBits(fitted, position, label->text().size()));
    showBits(bitString());
}

void InitialValueLine::rejectText(const QString &digits)
{
    // Under the message anything may go: the labels, this line, the page, the whole view.
    const QPointer<InitialValueLine> self = this;
    const QList<QLabel *> labelsBefore = labels;
    const QString bitsBefore = bitString();

    asking = true;
    const QString text = "Value '%1' for Probe Out%2 Initial Value exceeds the effective width.";
    showMessage(this, QMessageBox::Information, "Error", text.arg(digits, QString::number(index)));
    if (self) {
        asking = false;
        if (doomed)
            deleteLater();
    }
    if (isRetired(self))
        return;
    if (owner)
        emit owner->modified();
    showBits(labels == labelsBefore ? bitsBefore : bitString());
}

void InitialValueLine::showBits(const QString &bits)
{
    setText("0x" + stringBintoHex(bits));
}

} // namespace MOLK
