// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molksignalselectdialog.h"
#include "signalitem.h"

#include "treelines.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

/// A shown search dialog with its widgets at hand, used as a user does.
class SearchFixture
{
public:
    explicit SearchFixture(FATHOM::RtlNetlist *netlist, int type = 0)
        : dialog(netlist, type, nullptr)
    {
        dialog.show();
        Q_ASSERT(edit && results && selected);
    }

    template<typename Widget>
    Widget *find(const QString &name) const
    {
        auto *widget = dialog.findChild<Widget *>(name);
        Q_ASSERT(widget);
        return widget;
    }

    void click(const QString &name) const
    {
        auto *button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(5, button->height() / 2));
    }

    /// Types \a pattern, presses Search, and returns what is found.
    QStringList searchFor(const QString &pattern)
    {
        edit->clear();
        QTest::keyClicks(edit, pattern);
        click("pushButtonSearch");
        return treeLines(results->model());
    }

    QTreeWidget *scopeTree() const
    {
        return qobject_cast<QTreeWidget *>(find<QComboBox>("comboBoxSearchIn")->view());
    }

    /// Opens "Search In" and clicks on the level that reads \a text.
    void pickLevel(const QString &text) const
    {
        auto *box = find<QComboBox>("comboBoxSearchIn");
        box->showPopup();
        QTreeWidget *tree = scopeTree();
        const QList<QTreeWidgetItem *> rows =
            tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(rows.size(), 1);
        tree->scrollToItem(rows.first());
        const QPoint place = tree->visualItemRect(rows.first()).center();
        QTest::mouseMove(tree->viewport(), place);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTRY_VERIFY(!tree->isVisible());
        QCOMPARE(box->currentText(), text);
    }

    /// Selects the rows of \a tree that read \a texts by clicking on them, the first plainly and
    /// the others with Ctrl.
    static void clickRows(QTreeWidget *tree, const QStringList &texts)
    {
        tree->expandAll();
        Qt::KeyboardModifiers modifiers = Qt::NoModifier;
        for (const QString &text : texts) {
            const QList<QTreeWidgetItem *> rows =
                tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
            QVERIFY2(!rows.isEmpty(), qPrintable("there is no row " + text));
            tree->scrollToItem(rows.first());
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers,
                              tree->visualItemRect(rows.first()).center());
            modifiers = Qt::ControlModifier;
        }
    }

    QStringList selectedLines() const { return treeLines(selected->model()); }

    MOLK::MolkSignalSelectDialog dialog;
    QLineEdit *edit = dialog.findChild<QLineEdit *>("lineEditName");
    QTreeWidget *results = dialog.findChild<QTreeWidget *>("treeWidget");
    QTreeWidget *selected = dialog.findChild<QTreeWidget *>("treeWidgetAddSignal");
};
