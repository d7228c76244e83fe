// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMessageBox>

class QDialog;

namespace MOLK {

/// Runs \a dialog in a nested event loop, as a NestedLoop. It may be gone when this returns.
int execDialog(QDialog *dialog);

/// Runs \a dialog in a nested event loop and deletes it.
///
/// The parent of \a dialog may be destroyed meanwhile, and the dialog with it. So whoever calls
/// this from a member function guards its own object by a QPointer.
///
/// \param dialog made by `new`; gone when this returns.
/// \return what its exec() returned; 0 if it was destroyed meanwhile.
int execAndDelete(QDialog *dialog);

/// Shows a message box and waits for the answer, as the static functions of QMessageBox do, except
/// for two things: title and text are shown as they are, never as rich text, and the parent may be
/// destroyed meanwhile (see execAndDelete()).
///
/// \param parent may be null.
/// \return the button that was pressed, or stands for Escape; NoButton if the box was destroyed
///         meanwhile.
QMessageBox::StandardButton
showMessage(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
            QMessageBox::StandardButton defaultButton = QMessageBox::NoButton);

} // namespace MOLK
