// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>
#include <QList>
#include <QPointer>

class QLabel;
class QRegExpValidator;

namespace MOLK {

class ProbePortsOptionWidget;

/// The line in which the user edits the initial value of one Probe Out, in hexadecimal.
///
/// The line always reads "0x" and as many digits as the port's bits need; an input mask keeps it in
/// this form, and its blank is the digit 0, so that only displayText() tells the value. The bits
/// that were last accepted stand in labels below the line, one label a signal, most significant
/// first. They are the working copy: when the line loses the focus its text goes to the labels if
/// it fits, and the line is written anew from the labels in either case.
class InitialValueLine : public QLineEdit
{
    Q_OBJECT

public:
    /// Makes a line that reads 0x0.
    ///
    /// \param index number of the Probe Out, counted from 0, as messages name it.
    /// \param owner page whose modified() is emitted when the user edits; not owned.
    /// \param parent may be null.
    InitialValueLine(int index, ProbePortsOptionWidget *owner, QWidget *parent);

    /// Deletes the labels that are still in \a labels.
    ~InitialValueLine() override;

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// The number of bits in the labels; after a refresh of the page the width of the port.
    int bitCount() const;

    /// The bits of all labels, `0` and `1`, most significant first; empty without labels.
    QString bitString() const;

    /// Fits mask and validator to the present labels. The text stays as far as the mask has room:
    /// what lacks at its end becomes 0, what is too much is cut off there.
    void updateInputMask();

    /// As updateInputMask() for a value of \a bitCount bits, whatever the labels hold.
    void updateInputMask(int bitCount);

protected:
    /// Keeps the prefix "0x" from being edited. For each key that gets through, modified() of the
    /// owner is emitted first, whatever the key then does.
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    /// Commits the text: to the labels if its value fits, else with a message to the user. The text
    /// is written anew from the labels in either case. The line may be gone when the message was
    /// answered.
    void onTextChange();

public:
    int index; ///< Number of the Probe Out, counted from 0; the page renumbers its lines.

    /// The label of each signal of the port, in the order of the signals. The labels belong to the
    /// view that shows them for as long as they are its item widgets, and to the line at its end.
    QList<QLabel *> labels;

private:
    void deleteLabels();
    void rejectText(const QString &digits);
    void showBits(const QString &bits);

    QRegExpValidator *validator;
    QPointer<ProbePortsOptionWidget> owner;
    bool asking = false; // The message about a value that doesn't fit stands.
    bool doomed = false; // To be deleted once it doesn't.
};

} // namespace MOLK
