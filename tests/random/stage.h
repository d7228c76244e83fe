// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "modalscript.h"

#include "host/host.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <memory>

class QAction;

namespace MOLK {
class InitialValueLine;
class MolkInserterPlugin;
class MolkView;
class ProbePortsOptionWidget;
} // namespace MOLK

/// The real plug-in in a real host, with its widgets at hand. There is one in the process, because
/// the plug-in is brought up once.
class Stage
{
public:
    Stage();
    ~Stage();

    Q_DISABLE_COPY(Stage)

    /// How many documents there are at most.
    static constexpr int MostDocuments = 3;

    /// Drops all views and answers, and removes what lies under the paths of all documents.
    void clear();

    /// Makes \a document, counted from 0, the one that path(), view() and what is in it mean.
    void turnTo(int document) { current = document; }
    int document() const { return current; }

    QString path() const { return path(current); }
    QString path(int document) const;

    /// The view on path(); null if there is none.
    MOLK::MolkView *view() const { return view(current); }
    MOLK::MolkView *view(int document) const;

    QAction *saveAction() const;

    /// The core pages in their order.
    QList<MOLK::ProbePortsOptionWidget *> pages() const;
    MOLK::ProbePortsOptionWidget *shownPage() const;

    /// The names on the rows of cores.
    QTreeWidget *coreTree() const;

    /// The line of the value tree of \a page; null if there is none.
    static MOLK::InitialValueLine *line(const MOLK::ProbePortsOptionWidget *page, int port);

    /// Lets the time pass that the view waits after a change of its file.
    void letTimePass();

    /// Makes the window the active one with the focus on the rows of cores.
    void restFocus();

    /// Clicks on a row, which is made visible before. A row that should be there and isn't shows
    /// in what is compared, so null does nothing.
    static void click(QTreeWidgetItem *row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void doubleClick(QTreeWidgetItem *row);

    /// Clicks the button \a name below \a parent.
    static void press(const QWidget *parent, const QString &name);

    Standin::Host host;
    QTemporaryDir dir;
    ModalScript modals;

private:
    std::unique_ptr<MOLK::MolkInserterPlugin> plugin;
    int current = 0;
};
