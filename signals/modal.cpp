// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modal.h"

#include "retirement.h"

#include <QPointer>

namespace MOLK {

int execDialog(QDialog *dialog)
{
    const NestedLoop loop(dialog);
    return dialog->exec();
}

int execAndDelete(QDialog *dialog)
{
    const QPointer<QDialog> guard(dialog);
    const int result = execDialog(dialog);
    delete guard.data();
    return result;
}

QMessageBox::StandardButton showMessage(QWidget *parent, QMessageBox::Icon icon,
                                        const QString &title, const QString &text,
                                        QMessageBox::StandardButtons buttons,
                                        QMessageBox::StandardButton defaultButton)
{
    auto *box = new QMessageBox(icon, title, text, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(defaultButton);
    return QMessageBox::StandardButton(execAndDelete(box));
}

} // namespace MOLK
