// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"

#include "molksignalselectdialog.h"
#include "rtlnetlisttreeview.h"

#include "testwidgetsmain.h"
#include "treelines.h"

#include <QComboBox>

using namespace MOLK;

class TestRtlNetlistTreeView : public QObject
{
    Q_OBJECT

private slots:
    void rowsNameLevelsWithTheirModules();
    void rowsKnowTheirLevels();
    void onlyTheFirstLevelIsOpenedByTheTree();
    void aSingleLevelIsOneBareName();
    void noNetlistLeavesTheTreeEmpty();
    void anotherNetlistReplacesTheFirst();
    void anItemIsBuiltWithAllBelowIt();
    void theDialogOpensTheWholeHierarchyForGood();
    void theBoxFollowsADeepPick();
    void aWideHierarchyOpensAtOnce();
};

void TestRtlNetlistTreeView::rowsNameLevelsWithTheirModules()
{
    const Design design = searchDesign();
    RtlNetlistTreeView view(nullptr);
    QVERIFY(view.isHeaderHidden());
    view.setNetlist(design.get());
    QCOMPARE(treeLines(view.model()),
             QStringList({"top", "  u_core[core]", "    u_fifo[fifo]", "    u_idle[idle]",
                          "  u_pad[pad]"}));
    QCOMPARE(view.model()->columnCount(), 1);
}

void TestRtlNetlistTreeView::rowsKnowTheirLevels()
{
    const Design design = searchDesign();
    RtlNetlistTreeView view(nullptr);
    view.setNetlist(design.get());
    QTreeWidgetItem *row = view.topLevelItem(0)->child(0)->child(0);
    QCOMPARE(row->type(), 1003);
    auto *item = dynamic_cast<RtlTreeItem *>(row);
    QVERIFY(item);
    QCOMPARE(item->hierarchy, levelAt(design, "u_core/u_fifo"));
    QVERIFY(row->flags() & Qt::ItemIsSelectable);
}

void TestRtlNetlistTreeView::onlyTheFirstLevelIsOpenedByTheTree()
{
    const Design design = searchDesign();
    RtlNetlistTreeView view(nullptr);
    view.setNetlist(design.get());
    QVERIFY(view.topLevelItem(0)->isExpanded());
    QVERIFY(!view.topLevelItem(0)->child(0)->isExpanded());
}

void TestRtlNetlistTreeView::aSingleLevelIsOneBareName()
{
    const Design design(Standin::NetlistBuilder("alone").build());
    RtlNetlistTreeView view(nullptr);
    view.setNetlist(design.get());
    QCOMPARE(treeLines(view.model()), QStringList("alone"));
}

void TestRtlNetlistTreeView::noNetlistLeavesTheTreeEmpty()
{
    RtlNetlistTreeView view(nullptr);
    view.setNetlist(nullptr);
    QCOMPARE(view.topLevelItemCount(), 0);
}

void TestRtlNetlistTreeView::anotherNetlistReplacesTheFirst()
{
    const Design first = searchDesign();
    const Design second(Standin::NetlistBuilder("other").build());
    RtlNetlistTreeView view(nullptr);
    view.setNetlist(first.get());
    view.setNetlist(second.get());
    QCOMPARE(treeLines(view.model()), QStringList("other"));
    view.setNetlist(nullptr);
    QCOMPARE(view.topLevelItemCount(), 0);
}

void TestRtlNetlistTreeView::anItemIsBuiltWithAllBelowIt()
{
    const Design design = searchDesign();
    RtlNetlistTreeView view(nullptr);
    const std::unique_ptr<RtlTreeItem> item(view.buildItem(levelAt(design, "u_core")));
    QCOMPARE(item->text(0), QString("u_core[core]"));
    QCOMPARE(item->childCount(), 2);
    QVERIFY(!item->treeWidget());
}

void TestRtlNetlistTreeView::theDialogOpensTheWholeHierarchyForGood()
{
    const Design design = searchDesign();
    MolkSignalSelectDialog dialog(design.get(), 0, nullptr);
    auto *box = dialog.findChild<QComboBox *>("comboBoxSearchIn");
    auto *view = dynamic_cast<RtlNetlistTreeView *>(box->view());
    QVERIFY(view);
    QCOMPARE(box->model(), view->model());
    QVERIFY(!view->itemsExpandable());
    for (QTreeWidgetItemIterator it(view); *it; ++it)
        QVERIFY((*it)->isExpanded() || (*it)->childCount() == 0);
    QCOMPARE(box->currentText(), QString("top"));
    QVERIFY(!view->currentItem());
}

void TestRtlNetlistTreeView::theBoxFollowsADeepPick()
{
    const Design design = searchDesign();
    MolkSignalSelectDialog dialog(design.get(), 0, nullptr);
    dialog.show();
    auto *box = dialog.findChild<QComboBox *>("comboBoxSearchIn");
    auto *view = qobject_cast<QTreeWidget *>(box->view());
    for (const QString &text : QStringList{"u_fifo[fifo]", "top", "u_pad[pad]"}) {
        box->showPopup();
        QTreeWidgetItem *row = view->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first();
        const QPoint place = view->visualItemRect(row).center();
        QTest::mouseMove(view->viewport(), place);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTRY_VERIFY(!view->isVisible());
        QCOMPARE(view->currentItem(), row);
        QCOMPARE(box->currentText(), text);
    }
}

// Every row's place is asked for when the box opens; with rows of unlike heights that takes minutes
// here, and the test would run into its time limit.
void TestRtlNetlistTreeView::aWideHierarchyOpensAtOnce()
{
    Standin::NetlistBuilder builder("top");
    for (int i = 0; i < 30000; ++i)
        builder.addLevel(0, QString("u%1").arg(i), "m");
    const Design design(builder.build());
    MolkSignalSelectDialog dialog(design.get(), 0, nullptr);
    dialog.show();
    auto *box = dialog.findChild<QComboBox *>("comboBoxSearchIn");
    box->showPopup();
    QVERIFY(box->view()->isVisible());
    QVERIFY(qobject_cast<QTreeWidget *>(box->view())->uniformRowHeights());
    box->hidePopup();
}

MOLK_TEST_MAIN(TestRtlNetlistTreeView)

#include "tst_rtlnetlisttreeview.moc"
