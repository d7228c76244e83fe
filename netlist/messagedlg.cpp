// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagedlg.h"

#include "ui_messagedlg.h"

#include <QPushButton>

namespace MOLK {

MessageDlg::MessageDlg(QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::MessageDlg)
{
    ui->setupUi(this);
    connect(ui->buttonBox->button(QDialogButtonBox::Ok), SIGNAL(clicked()), this, SLOT(accept()));
}

MessageDlg::~MessageDlg()
{
    delete ui;
}

void MessageDlg::setMessages(const QStringList &messages)
{
    // Names of a design may look like markup.
    ui->textEdit->setPlainText(messages.join("\n"));
}

} // namespace MOLK
