// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace MOLK {

/// Marks, while it lives, that a nested event loop of ours runs: a message box, a dialog, a menu, a
/// service of the host that takes its time.
///
/// Such a loop is entered from the midst of an event: a click, a double click, a change of the
/// focus. What Qt has on the stack there goes on with its widgets when the loop has ended, and
/// doesn't ask whether they are still alive. So no widget of ours may be deleted meanwhile; it is
/// retired.
class NestedLoop
{
public:
    /// \param window the dialog or menu whose loop it is; null if it is a service of the host.
    explicit NestedLoop(QWidget *window);
    ~NestedLoop();

    NestedLoop(const NestedLoop &) = delete;
    NestedLoop &operator=(const NestedLoop &) = delete;
};

/// Takes \a widget out of use for good, and deletes it when the event that led into the outermost
/// nested loop is over.
///
/// Until then it is hidden below a parent that nobody sees, and nothing that happens to it reaches
/// a slot of a page or a dialog of ours any more; dialogs and menus in it are cancelled, the
/// innermost first. The model behind it may go at once.
///
/// \return false if no nested loop runs, with \a widget left as it is.
bool retire(QWidget *widget);

/// retire() for each child of \a parent, which itself is being deleted.
void retireChildren(QWidget *parent);

/// Whether \a widget, or a widget that it belongs to, is retired. Whoever goes on behind a nested
/// loop asks this besides whether \a widget is alive at all; null counts as retired.
bool isRetired(const QWidget *widget);

} // namespace MOLK
