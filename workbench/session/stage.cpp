// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "stage.h"

#include "hands.h"
#include "mainwindow.h"
#include "picturefile.h"
#include "runtime.h"
#include "treelines.h"

#include <QApplication>
#include <QPixmap>
#include <QTreeWidget>

#include <cstdio>

namespace Workbench {

static void print(const QString &line)
{
    puts(qPrintable(line));
    fflush(stdout);
}

Stage::Stage(Runtime *application, const QString &folder)
    : runtime(application)
    , window(application->window())
    , directory(folder)
    , dialogs([this](const QString &surprise) { fail(surprise); })
{
}

void Stage::run(const QString &title, const std::function<void()> &step)
{
    if (failed())
        return;
    ++steps;
    step();
    if (!failed() && !dialogs.missing().isEmpty())
        fail("no window came: " + dialogs.missing());
    const QString number = QString("%1  ").arg(steps, 2);
    print(number + QLatin1String(failed() ? "FAILED  " : "ok  ") + title);
    if (failed())
        print(problem);
}

void Stage::fail(const QString &text)
{
    if (failed())
        return;
    problem = text;
    QWidget *front = QApplication::activeModalWidget();
    (front ? front : window)->grab().save(directory.filePath("failure.png"));
}

static QString difference(const QStringList &actual, const QStringList &expected)
{
    QString text;
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        const QString is = i < actual.size() ? actual.at(i) : "(nothing)";
        const QString wanted = i < expected.size() ? expected.at(i) : "(nothing)";
        text += is == wanted ? "      " + is + "\n" : "    - " + wanted + "\n    + " + is + "\n";
    }
    return text;
}

void Stage::same(const QString &what, const QStringList &actual, const QStringList &expected)
{
    if (actual != expected)
        fail(what + " differs (- expected, + found):\n" + difference(actual, expected));
}

void Stage::same(const QString &what, const QString &actual, const QString &expected)
{
    same(what, QStringList(actual), QStringList(expected));
}

void Stage::check(const QString &what, bool condition)
{
    if (!condition)
        fail("not so: " + what);
}

QStringList Stage::rows(QWidget *parent, const QString &name)
{
    return treeLines(find<QTreeWidget>(parent, name)->model());
}

QStringList Stage::topRows(QWidget *parent, const QString &name)
{
    QStringList texts;
    const auto *tree = find<QTreeWidget>(parent, name);
    texts.reserve(tree->topLevelItemCount());
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        texts.append(tree->topLevelItem(i)->text(0));
    return texts;
}

void Stage::closePopup()
{
    if (QApplication::activePopupWidget())
        Hands::key(Qt::Key_Escape);
}

void Stage::takePicture(QWidget *widget, const QString &name)
{
    if (failed())
        return;
    const QString path = directory.filePath(name + ".png");
    if (!savePicture(widget->grab().toImage(), path))
        fail("can't write " + path);
}

} // namespace Workbench
