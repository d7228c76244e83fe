// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modal.h"

#include <QPointer>

namespace MOLK {

int execAndDelete(QDialog *dialog)
{
    const QPointer<QDialog> guard(dialog);
    const int result = dialog->exec();
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
