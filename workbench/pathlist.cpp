// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pathlist.h"

#include "project/edamfile.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>

namespace Workbench {

PathList::PathList(const QString &directory, QWidget *parent)
    : QWidget(parent)
    , projectDirectory(directory)
    , list(new QListWidget(this))
{
    list->setObjectName("paths");
    list->setTextElideMode(Qt::ElideMiddle);
    list->setToolTip(tr("Directories in which files named by `include are looked for, in order.\n"
                        "Relative ones begin at the project file."));
    // The label in front leads here.
    setFocusProxy(list);
    setFocusPolicy(list->focusPolicy());

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list);
    layout->addLayout(new QVBoxLayout);
    addButton(tr("A&dd..."), tr("Choose a directory and append it (Insert)"), Qt::Key_Insert,
              SLOT(onAdd()));
    remove = addButton(tr("&Remove"), tr("Take the line out of the list (Delete)"), Qt::Key_Delete,
                       SLOT(onRemove()));
    up = addButton(tr("&Up"), tr("Look here earlier (Alt+Up)"), Qt::ALT + Qt::Key_Up, SLOT(onUp()));
    down = addButton(tr("Do&wn"), tr("Look here later (Alt+Down)"), Qt::ALT + Qt::Key_Down,
                     SLOT(onDown()));
    static_cast<QVBoxLayout *>(layout->itemAt(1)->layout())->addStretch();

    connect(list, &QListWidget::currentRowChanged, this, &PathList::refreshButtons);
    refreshButtons();
}

QPushButton *PathList::addButton(const QString &text, const QString &toolTip,
                                 const QKeySequence &key, const char *slot)
{
    auto *button = new QPushButton(text, this);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    connect(button, SIGNAL(clicked()), this, slot);
    auto *shortcut = new QShortcut(key, list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, SIGNAL(activated()), this, slot);
    layout()->itemAt(1)->layout()->addWidget(button);
    return button;
}

QStringList PathList::paths() const
{
    QStringList all;
    for (int i = 0; i < list->count(); ++i) {
        const QString path = list->item(i)->text().trimmed();
        if (!path.isEmpty())
            all.append(path);
    }
    return all;
}

void PathList::setPaths(const QStringList &paths)
{
    list->clear();
    for (const QString &path : paths)
        append(path);
    list->setCurrentRow(paths.isEmpty() ? -1 : 0);
}

void PathList::append(const QString &path)
{
    auto *item = new QListWidgetItem(path, list);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
}

void PathList::onAdd()
{
    const QPointer<PathList> guarded = this;
    const QString path =
        QFileDialog::getExistingDirectory(this, tr("Add Include Directory"), projectDirectory);
    if (!guarded || path.isEmpty())
        return;
    append(Standin::nameInProject(path, projectDirectory));
    list->setCurrentRow(list->count() - 1);
}

void PathList::onRemove()
{
    delete list->currentItem();
    refreshButtons();
}

void PathList::onUp()
{
    move(-1);
}

void PathList::onDown()
{
    move(1);
}

void PathList::move(int distance)
{
    const int row = list->currentRow();
    const int goal = row + distance;
    if (row < 0 || goal < 0 || goal >= list->count())
        return;
    list->insertItem(goal, list->takeItem(row));
    list->setCurrentRow(goal);
}

void PathList::refreshButtons()
{
    const int row = list->currentRow();
    remove->setEnabled(row >= 0);
    up->setEnabled(row > 0);
    down->setEnabled(row >= 0 && row < list->count() - 1);
}

} // namespace Workbench
