// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace Core {
class IView;
}

namespace Standin {

class DocumentArea;

/// The parent of one shown view. Closing it closes the view without a question.
class ViewPage : public QWidget
{
    Q_OBJECT

public:
    /// Takes \a view over as its child.
    ViewPage(Core::IView *view, DocumentArea *area);

    /// Lets the view leave the area first, while it is whole.
    ~ViewPage() override;

    Core::IView *view;   ///< Null when the view was deleted from outside.
    bool asking = false; ///< The view is handling a close event.
    bool left = false;   ///< The view has left the area; only the deletion is due.

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    DocumentArea *area;
};

} // namespace Standin
