// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "errorbox.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace Workbench {

void showError(QWidget *parent, const QString &text)
{
    QMessageBox box(QMessageBox::Critical,
                    QCoreApplication::translate("Workbench::ErrorBox", "Error"), text,
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace Workbench
