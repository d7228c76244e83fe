// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>

namespace MOLK {

namespace Ui {
class MessageDlg;
}

/// Shows lines of plain text, such as a tool's log.
class MessageDlg : public QDialog
{
    Q_OBJECT

public:
    /// Makes a dialog without lines.
    ///
    /// \param parent may be null.
    explicit MessageDlg(QWidget *parent);
    ~MessageDlg() override;

    /// Shows \a messages, a line each, in place of what was shown.
    void setMessages(const QStringList &messages);

private:
    Ui::MessageDlg *ui;
};

} // namespace MOLK
