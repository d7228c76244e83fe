// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "reloadbanner.h"
#include "testwidgetsmain.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_ReloadBanner : public QObject
{
    Q_OBJECT

private slots:
    void formHasItsProperties();
    void modeChoosesTextsAndSignals_data();
    void modeChoosesTextsAndSignals();
    void unknownModeNeverAnswers();
    void otherTextReplacesTheQuestion();
    void markupIsShownAsItIs();
    void longFileNameNeedsNoWideView();
    void questionWrapsOnlyWhereItMust();
};

template<typename Type>
static Type *child(const QWidget &banner, const QString &name)
{
    return banner.findChild<Type *>(name);
}

void tst_ReloadBanner::formHasItsProperties()
{
    const ReloadBanner banner(0, QString(), nullptr);

    QCOMPARE(banner.objectName(), QString("MOLK__ReloadBanner"));
    QCOMPARE(banner.size(), QSize(603, 68));
    QCOMPARE(banner.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(banner.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    const auto *layout = qobject_cast<QHBoxLayout *>(banner.layout());
    QVERIFY(layout);
    QCOMPARE(layout->objectName(), QString("horizontalLayout"));
    QCOMPARE(layout->spacing(), 15);
    QCOMPARE(layout->contentsMargins().top(), 5);
    QCOMPARE(layout->contentsMargins().bottom(), 5);
    QCOMPARE(layout->itemAt(0)->widget(), child<QLabel>(banner, "label"));
    QCOMPARE(layout->itemAt(1)->widget(), child<QLabel>(banner, "labelFile"));
    QCOMPARE(layout->itemAt(2)->widget(), child<QWidget>(banner, "widget"));
    QVERIFY(layout->itemAt(3)->spacerItem());
    QCOMPARE(layout->itemAt(3)->sizeHint(), QSize(40, 20));
    QVERIFY(layout->itemAt(3)->expandingDirections() == Qt::Horizontal);
    QCOMPARE(layout->count(), 4);
    QCOMPARE(child<QLabel>(banner, "labelFile")->font().weight(), 75);
    const QLayout *buttons = child<QWidget>(banner, "widget")->layout();
    QCOMPARE(buttons->objectName(), QString("verticalLayout_2"));
    QCOMPARE(buttons->contentsMargins(), QMargins());
    QCOMPARE(buttons->itemAt(0)->widget(), child<QPushButton>(banner, "btnA"));
    QCOMPARE(buttons->itemAt(1)->widget(), child<QPushButton>(banner, "btnB"));
}

void tst_ReloadBanner::modeChoosesTextsAndSignals_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QStringList>("answers");

    const QStringList changedButtons = {"Reload", "Cancel"};
    const QStringList changedAnswers = {"reload", "cancel"};
    QTest::newRow("changed") << 0 << "/d/a.molk"
                             << "The file '/d/a.molk' changed on disk.\nDo you want to reload?"
                             << changedButtons << changedAnswers;
    QTest::newRow("changed-without-file") << 0 << ""
                                          << "The file '' changed on disk.\nDo you want to reload?"
                                          << changedButtons << changedAnswers;
    QTest::newRow("removed") << 1 << "/d/a.molk"
                             << "The file '/d/a.molk' has been removed on disk.\n"
                                "Do you still want to keep it?"
                             << QStringList({"Keep It", "Close"})
                             << QStringList({"keepIt", "closeIt"});
}

void tst_ReloadBanner::modeChoosesTextsAndSignals()
{
    QFETCH(int, mode);
    QFETCH(QString, file);
    QFETCH(QStringList, buttons);
    QFETCH(QStringList, answers);
    ReloadBanner banner(mode, file, nullptr);
    QStringList heard;
    connect(&banner, &ReloadBanner::reload, this, [&] { heard.append("reload"); });
    connect(&banner, &ReloadBanner::cancel, this, [&] { heard.append("cancel"); });
    connect(&banner, &ReloadBanner::keepIt, this, [&] { heard.append("keepIt"); });
    connect(&banner, &ReloadBanner::closeIt, this, [&] { heard.append("closeIt"); });

    QTEST(child<QLabel>(banner, "labelFile")->text(), "text");
    QCOMPARE(child<QPushButton>(banner, "btnA")->text(), buttons.at(0));
    QCOMPARE(child<QPushButton>(banner, "btnB")->text(), buttons.at(1));
    child<QPushButton>(banner, "btnA")->click();
    child<QPushButton>(banner, "btnB")->click();
    QCOMPARE(heard, answers);
}

void tst_ReloadBanner::unknownModeNeverAnswers()
{
    ReloadBanner banner(2, "/d/a.molk", nullptr);
    QList<QSignalSpy *> spies;
    for (const char *signal :
         {SIGNAL(reload()), SIGNAL(cancel()), SIGNAL(keepIt()), SIGNAL(closeIt())})
        spies.append(new QSignalSpy(&banner, signal));

    child<QPushButton>(banner, "btnA")->click();
    child<QPushButton>(banner, "btnB")->click();

    for (const QSignalSpy *spy : qAsConst(spies))
        QCOMPARE(spy->count(), 0);
    qDeleteAll(spies);
    QCOMPARE(child<QPushButton>(banner, "btnA")->text(), QString("Reload"));
    QCOMPARE(child<QPushButton>(banner, "btnB")->text(), QString("Cancel"));
    QCOMPARE(child<QLabel>(banner, "labelFile")->text(),
             QString("<html><head/><body><p>The file /home/somedir/some_file changed "
                     "externaly.</p><p>Do you want to reload?</p></body></html>"));
}

void tst_ReloadBanner::otherTextReplacesTheQuestion()
{
    ReloadBanner banner(0, QString(), nullptr);

    banner.setBannerText("Design files changed. Do you want to reload?");

    QCOMPARE(child<QLabel>(banner, "labelFile")->text(),
             QString("Design files changed. Do you want to reload?"));
}

void tst_ReloadBanner::markupIsShownAsItIs()
{
    ReloadBanner changed(0, "/d/<b>a.molk", nullptr);
    QCOMPARE(child<QLabel>(changed, "labelFile")->textFormat(), Qt::PlainText);
    const ReloadBanner removed(1, "/d/<b>a.molk", nullptr);
    QCOMPARE(child<QLabel>(removed, "labelFile")->textFormat(), Qt::PlainText);
    QVERIFY(child<QLabel>(removed, "labelFile")->text().contains("<b>a.molk"));
}

void tst_ReloadBanner::longFileNameNeedsNoWideView()
{
    const ReloadBanner usual(0, "/home/user/project/a.molk", nullptr);
    const ReloadBanner deep(0, QString("/home/user/project").repeated(12) + "/a.molk", nullptr);

    QCOMPARE(deep.minimumSizeHint().width(), usual.minimumSizeHint().width());
}

void tst_ReloadBanner::questionWrapsOnlyWhereItMust()
{
    ReloadBanner banner(0, "/home/user/some/project/probes.molk", nullptr);
    const auto *label = child<QLabel>(banner, "labelFile");
    const auto *buttons = child<QWidget>(banner, "widget");
    const int wanted = label->fontMetrics().size(0, label->text()).width() + 2 * label->margin();
    banner.resize(wanted + 500, banner.height());
    banner.show();
    QVERIFY(QTest::qWaitForWindowExposed(&banner));
    QVERIFY(label->width() >= wanted);
    // The buttons stay beside the question.
    QCOMPARE(buttons->x(), label->geometry().right() + 1 + banner.layout()->spacing());

    banner.resize(wanted, banner.height());
    QTRY_VERIFY(label->width() < wanted);
    QVERIFY(label->height() >= label->heightForWidth(label->width()));

    banner.resize(wanted + 500, banner.height());
    banner.setBannerText("Short?");
    QTRY_VERIFY(label->width() < wanted / 2);
}

MOLK_TEST_MAIN(tst_ReloadBanner)
#include "tst_reloadbanner.moc"
