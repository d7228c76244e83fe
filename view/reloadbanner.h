// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace MOLK {

namespace Ui {
class ReloadBanner;
}

/// A question at the top of a view, with two answers. Whoever shows it takes it down when one of
/// its signals has come.
class ReloadBanner : public QWidget
{
    Q_OBJECT

public:
    static constexpr int FileChanged = 0; ///< Asks with reload() and cancel().
    static constexpr int FileRemoved = 1; ///< Asks with keepIt() and closeIt().

    /// \param mode one of the two constants; any other gives a banner that never answers.
    /// \param file path that the question names; may be empty.
    /// \param parent may be null.
    ReloadBanner(int mode, const QString &file, QWidget *parent);
    ~ReloadBanner() override;

    /// Asks another question, in plain text. The answers stay.
    void setBannerText(const QString &text);

signals:
    /// The user's answer. A banner emits one for each click, and stays until it is taken down.
    void reload();
    void cancel();
    void keepIt();
    void closeIt();

private:
    Ui::ReloadBanner *ui;
};

} // namespace MOLK
