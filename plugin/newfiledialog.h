// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>

namespace MOLK {

namespace Ui {
class NewFileDialog;
}

/// Asks for a name and a directory, makes a `.molk` file without cores there, and adds it to the
/// current project if the user wants that.
class NewFileDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param path directory to offer; the home directory if it is empty.
    /// \param parent may be null.
    NewFileDialog(const QString &path, QWidget *parent);
    ~NewFileDialog() override;

public slots:
    /// Makes the file and closes the dialog. The dialog stays open and tells why if it can't; an
    /// existing file is never touched.
    void accept() override;

private slots:
    void onBrowse();

private:
    void showInfo(const QString &text);
    bool checkInput(const QString &name, const QString &dir, const QString &path);
    bool createFile(const QString &path);

    Ui::NewFileDialog *ui;
};

} // namespace MOLK
