// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QAction;
class QFileSystemWatcher;

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

class MolkCore;
class MolkOptionWidget;
class MolkView;
class ReloadBanner;

namespace private_impl {

/// The document behind a MolkView: model, netlist and pages, and the operations that keep them in
/// step.
///
/// `cores[i]->id` is i, `optionWidgets[i]` is the page of `cores[i]`, and the line of the tree at i
/// is its name. The cores, the netlist, the actions and the watcher are owned. The pages belong to
/// the widget tree and die after all of these, so that a page must not follow its core or netlist
/// when it is destroyed.
class MolkViewPrivate : public QObject
{
    Q_OBJECT

public:
    explicit MolkViewPrivate(MolkView *view);
    ~MolkViewPrivate() override;

    static MolkViewPrivate *get(MolkView *view);

    /// The first core numbered \a id, or null.
    MolkCore *coreById(int id) const;

    /// Appends a core numbered \a id and its page, and marks the document as modified. With 16
    /// cores the user is told that there can't be more.
    void addCore(int id);

    /// Asks the user, then removes the core at \a index with its page, renumbers the others and
    /// marks the document as modified. The user is told if it is the only core. An index of -1 or
    /// past the end does nothing. The view may be gone when it returns.
    void removeCore(int index);

    /// Makes the pages of all cores. The document isn't marked as modified.
    void createOptionWidgets();

    /// Puts the numbers of the cores just read and of their ports in order, and makes the pages; a
    /// configuration without cores gets its first one.
    void makePages();

    /// Replaces the netlist, which is owned, and hands it to all pages. \a newNetlist may be null.
    void setRtlNetlist(FATHOM::RtlNetlist *newNetlist);

    /// Stores the pages into the cores, judges the cores and writes the file.
    ///
    /// On success the document counts as unmodified, and the titles lose their star.
    /// \return false if nothing was written; the user has been told why, and the view may be gone.
    bool saveFile();

    /// Whether the cores may be written.
    /// \param report receives what speaks against it, a line for each fault; may be null.
    bool validate(QString *report) const;

    /// Takes the focus from the value that is being edited, so that it is committed while nothing
    /// is half done. A value that doesn't fit raises a message. \return false if the view is gone.
    bool commitValue();

    /// Ends the modified state and tells of it if it was set; the titles stay as they are.
    void clearModified();

    /// Puts \a banner, a child of the view, on top of the view.
    void showBanner(ReloadBanner *banner);

    /// Takes a banner down and deletes it.
    /// \param sender the sender of the answer; nothing happens if it isn't a banner.
    void takeDownBanner(QObject *sender);

    /// Ends the modified state, so that nobody asks about saving, and closes the view's parent,
    /// which takes the view with it. Without a parent the view stays.
    void closeWithoutQuestion();

    MolkView *q;
    QString file;
    QList<MolkCore *> cores;
    FATHOM::RtlNetlist *netlist = nullptr;
    QList<MolkOptionWidget *> optionWidgets;
    QAction *addAction;
    QAction *removeAction;
    bool modified = false;
    std::function<void(bool)> modificationChanged;
    QFileSystemWatcher *watcher;
    bool reloadPending = false;
};

} // namespace private_impl
} // namespace MOLK
