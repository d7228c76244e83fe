// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagespane.h"
#include "testwidgetsmain.h"
#include "treelines.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTreeWidget>

using Workbench::MessagesPane;

class MessagesPaneTest : public QObject
{
    Q_OBJECT

private slots:
    void errorsAndWarningsAreListed();
    void aNewReadingReplacesTheProblems();
    void anErrorBringsTheProblemsForward();
    void aDoubleClickAsksForThePlace();
    void aProblemWithoutAPlaceAsksForNothing();
};

static QTreeWidget *problemsOf(MessagesPane &pane)
{
    return pane.findChild<QTreeWidget *>("problems");
}

static QStringList twoProblems()
{
    return {"INFO: read 2 files", "WARNING: /d/a.v:3:1: odd", "ERROR: /d/b.v:14: no such module"};
}

void MessagesPaneTest::errorsAndWarningsAreListed()
{
    MessagesPane pane;
    pane.appendLine("Opened.");
    pane.setDesignLog(twoProblems());

    const QTreeWidget *problems = problemsOf(pane);
    QCOMPARE(treeLines(problems->model()), QStringList({"odd", "no such module"}));
    QCOMPARE(treeLines(problems->model(), 1), QStringList({"a.v", "b.v"}));
    QCOMPARE(treeLines(problems->model(), 2), QStringList({"3", "14"}));
    QCOMPARE(problems->topLevelItem(0)->toolTip(1), "/d/a.v");
    QCOMPARE(pane.tabText(0), "Problems (2)");
    QCOMPARE(pane.problemCount(), 2);
    QCOMPARE(pane.findChild<QPlainTextEdit *>("log")->toPlainText(),
             "Opened.\n" + twoProblems().join('\n'));
}

void MessagesPaneTest::aNewReadingReplacesTheProblems()
{
    MessagesPane pane;
    pane.setDesignLog(twoProblems());
    pane.setDesignLog({});
    QCOMPARE(pane.problemCount(), 0);
    QCOMPARE(pane.tabText(0), "Problems");
    QCOMPARE(pane.findChild<QPlainTextEdit *>("log")->toPlainText(), twoProblems().join('\n'));
}

void MessagesPaneTest::anErrorBringsTheProblemsForward()
{
    MessagesPane pane;
    pane.setCurrentIndex(1);
    pane.setDesignLog({"WARNING: odd"});
    QCOMPARE(pane.currentIndex(), 1);
    pane.setDesignLog({"ERROR: bad"});
    QCOMPARE(pane.currentIndex(), 0);
}

void MessagesPaneTest::aDoubleClickAsksForThePlace()
{
    MessagesPane pane;
    pane.resize(600, 200);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.setDesignLog(twoProblems());
    QSignalSpy activated(&pane, &MessagesPane::placeActivated);

    QTreeWidget *problems = problemsOf(pane);
    const QPoint middle = problems->visualItemRect(problems->topLevelItem(1)).center();
    QTest::mouseClick(problems->viewport(), Qt::LeftButton, {}, middle);
    QCOMPARE(activated.count(), 0);
    QTest::mouseDClick(problems->viewport(), Qt::LeftButton, {}, middle);
    QCOMPARE(activated, QList<QVariantList>({{"/d/b.v", 14}}));
}

void MessagesPaneTest::aProblemWithoutAPlaceAsksForNothing()
{
    MessagesPane pane;
    pane.show();
    pane.setDesignLog({"ERROR: cancelled"});
    QSignalSpy activated(&pane, &MessagesPane::placeActivated);
    QTreeWidget *problems = problemsOf(pane);
    problems->setCurrentItem(problems->topLevelItem(0));
    QTest::keyClick(problems, Qt::Key_Return);
    QCOMPARE(activated.count(), 0);
}

MOLK_TEST_MAIN(MessagesPaneTest)
#include "tst_messagespane.moc"
