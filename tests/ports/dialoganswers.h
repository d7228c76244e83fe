// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molksignalselectdialog.h"
#include "treelines.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeWidget>

/// Presses a standard button of a dialog.
inline void press(const QDialog *dialog, QDialogButtonBox::StandardButton button)
{
    dialog->findChild<QDialogButtonBox *>("buttonBox")->button(button)->click();
}

/// What a search for everything finds.
inline QStringList foundBy(MOLK::MolkSignalSelectDialog *dialog)
{
    dialog->findChild<QPushButton *>("pushButtonSearch")->click();
    return treeLines(dialog->findChild<QTreeWidget *>("treeWidget")->model());
}
