// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designchanges.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include "fathom/rtlnetlist.h"

#include <QAction>
#include <QDockWidget>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTreeWidget>

using namespace MOLK;

class tst_MolkViewForm : public ViewTest
{
    Q_OBJECT

private slots:
    void formHasItsObjects();
    void formHasItsProperties();
    void changedBannerHasItsProperties();
    void newViewIsEmptyAndClean();
    void newViewHasItsActionsAndWatchesNothing();
    void answersForItsTypes();
    void slotsStandInTheirOrder();
    void subscribesWhenMadeAndUnsubscribesWhenGone();
    void deafBeforeAnythingOfItGoes();
    void okHidesTheChangedBanner();
    void narrowViewCutsOffNoCore();
};

// The named objects below `object`, one line each, without those that Qt's own widgets make.
static void appendObjects(const QObject *object, const QString &indent, QStringList &lines)
{
    for (const QObject *child : object->children()) {
        const QString name = child->objectName();
        if (name.isEmpty() || name.startsWith("qt_"))
            continue;
        lines.append(indent + QLatin1String(child->metaObject()->className()) + " " + name);
        appendObjects(child, indent + "  ", lines);
    }
}

void tst_MolkViewForm::formHasItsObjects()
{
    newView();

    QStringList lines;
    appendObjects(view.get(), QString(), lines);

    const QStringList wanted = {
        "QVBoxLayout verticalLayout_3",
        "QWidget widget_3",
        "QWidget widget_2",
        "  QHBoxLayout horizontalLayout",
        "  QLabel warningIcon",
        "  QLabel warningText",
        "  QPushButton okBtn",
        "QWidget widget",
        "  QHBoxLayout horizontalLayout",
        "  QDockWidget dockWidget",
        "    QWidget dockWidgetContents",
        "      QVBoxLayout verticalLayout",
        "      QTreeWidget treeWidget",
        "  QDockWidget dockWidget_2",
        "    QWidget dockWidgetContents_2",
        "      QVBoxLayout verticalLayout_2",
        "      QStackedWidget stackedWidget",
    };
    QCOMPARE(lines, wanted);
}

void tst_MolkViewForm::formHasItsProperties()
{
    newView();

    QCOMPARE(view->objectName(), QString("MOLK__MolkView"));
    QVERIFY(view->isEnabled());
    QCOMPARE(view->windowTitle(), QString());
    QCOMPARE(view->layout()->spacing(), 0);
    QCOMPARE(view->layout()->indexOf(child<QWidget>(view, "widget_3")), 0);
    QCOMPARE(view->layout()->indexOf(child<QWidget>(view, "widget_2")), 1);
    auto *panes = view->findChild<QWidget *>("widget", Qt::FindDirectChildrenOnly);
    QCOMPARE(view->layout()->indexOf(panes), 2);

    auto *paneLayout = qobject_cast<QHBoxLayout *>(panes->layout());
    QVERIFY(paneLayout);
    QCOMPARE(paneLayout->spacing(), 0);
    QCOMPARE(paneLayout->contentsMargins(), QMargins());
    QCOMPARE(paneLayout->stretch(0), 1);
    QCOMPARE(paneLayout->stretch(1), 7);

    const auto *tree = child<QTreeWidget>(view, "treeWidget");
    QVERIFY(tree->isHeaderHidden());
    QCOMPARE(tree->headerItem()->text(0), QString("1"));
    QCOMPARE(tree->contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(tree->selectionMode(), QAbstractItemView::SingleSelection);
    for (const char *name : {"dockWidget", "dockWidget_2"}) {
        const auto *dock = child<QDockWidget>(view, QLatin1String(name));
        QCOMPARE(dock->features(), QDockWidget::NoDockWidgetFeatures);
        QCOMPARE(dock->widget()->layout()->spacing(), 0);
        QCOMPARE(dock->widget()->layout()->contentsMargins(), QMargins());
    }
    QCOMPARE(child<QDockWidget>(view, "dockWidget")->windowTitle(), QString("MOLK Core"));
    QCOMPARE(child<QDockWidget>(view, "dockWidget_2")->windowTitle(), QString());

    const auto *banners = child<QWidget>(view, "widget_3");
    QVERIFY(banners->isEnabled());
    QVERIFY(banners->isHidden());
    auto *bannerLayout = qobject_cast<QHBoxLayout *>(banners->layout());
    QVERIFY(bannerLayout);
    QCOMPARE(bannerLayout->spacing(), 0);
    QCOMPARE(bannerLayout->contentsMargins(), QMargins());
}

void tst_MolkViewForm::changedBannerHasItsProperties()
{
    newView();

    const auto *banner = child<QWidget>(view, "widget_2");
    QVERIFY(banner->isHidden());
    QCOMPARE(banner->windowTitle(), QString("Form"));
    QCOMPARE(banner->layout()->contentsMargins(), QMargins(10, 0, 0, 0));
    QCOMPARE(child<QLabel>(banner, "warningIcon")->text(), QString());
    QCOMPARE(child<QLabel>(banner, "warningText")->text(),
             QString("Netlist File has been changed."));
    QCOMPARE(child<QPushButton>(banner, "okBtn")->text(), QString("OK"));
    QCOMPARE(child<QPushButton>(banner, "okBtn")->maximumSize(), QSize(32, QWIDGETSIZE_MAX));
    QLayoutItem *last = banner->layout()->itemAt(banner->layout()->count() - 1);
    QVERIFY(last->spacerItem());
    QCOMPARE(last->sizeHint(), QSize(120, 20));
    QCOMPARE(last->spacerItem()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
}

void tst_MolkViewForm::newViewIsEmptyAndClean()
{
    newView();

    QCOMPARE(view->size(), QSize(672, 471));
    QCOMPARE(view->file(), QString());
    QCOMPARE(view->device(), QString());
    QVERIFY(!view->isModified());
    QCOMPARE(shortTitle(view.get()), QString());
    QCOMPARE(child<QTreeWidget>(view, "treeWidget")->topLevelItemCount(), 0);
    QCOMPARE(child<QStackedWidget>(view, "stackedWidget")->count(), 0);
}

void tst_MolkViewForm::newViewHasItsActionsAndWatchesNothing()
{
    newView();
    const auto *made = document();

    QCOMPARE(made->q, view.get());
    QVERIFY(made->parent() == nullptr);
    QVERIFY(made->cores.isEmpty());
    QVERIFY(made->optionWidgets.isEmpty());
    QVERIFY(made->netlist == nullptr);
    QVERIFY(!made->reloadPending);
    QCOMPARE(made->addAction->text(), QString("Add"));
    QCOMPARE(made->removeAction->text(), QString("Remove"));
    QCOMPARE(made->watcher->files(), QStringList());
    QVERIFY(made->modificationChanged != nullptr);
}

void tst_MolkViewForm::answersForItsTypes()
{
    newView();

    QCOMPARE(view->qt_metacast("MOLK::MolkView"), static_cast<void *>(view.get()));
    QCOMPARE(view->qt_metacast("QUtil::IEventHandler"),
             static_cast<void *>(static_cast<QUtil::IEventHandler *>(view.get())));
    QCOMPARE(view->qt_metacast("Core::IView"), static_cast<void *>(view.get()));
    QVERIFY(view->qt_metacast("MOLK::MolkOptionWidget") == nullptr);
    QVERIFY(view->qt_metacast(nullptr) == nullptr);
}

void tst_MolkViewForm::slotsStandInTheirOrder()
{
    const QMetaObject &meta = MolkView::staticMetaObject;
    QStringList own;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        own.append(QString::fromLatin1(meta.method(i).methodSignature()));

    QCOMPARE(own,
             QStringList(
                 {"modificationStatusChanged(bool)", "onModified()",
                  "on_treeWidget_customContextMenuRequested(QPoint)",
                  "on_treeWidget_doubleClicked(QModelIndex)", "on_treeWidget_clicked(QModelIndex)",
                  "onOKBtn()", "onFileChange()", "checkForReload()", "onBannerReload()",
                  "onBannerCancel()", "onBannerKeep()", "onBannerClose()", "subscribeEvent()",
                  "unsubscribeEvent()", "readRtlNetlist()", "onRtlReload()", "onReloadCancel()"}));
}

void tst_MolkViewForm::subscribesWhenMadeAndUnsubscribesWhenGone()
{
    const QStringList events = {"TE.File.Add",         "TE.File.Remove",   "TE.File.Change.Enable",
                                "TE.File.Change.Type", "TE.File.Modified", "TE.Option.Change"};
    newView();
    QStringList wanted = events;
    QCOMPARE(bench->host.calls(), wanted.replaceInStrings("TE.", "subscribe TE."));

    bench->host.clearCalls();
    view.reset();
    wanted = events;
    QCOMPARE(bench->host.calls(), wanted.replaceInStrings("TE.", "unsubscribe TE."));
}

// The netlist is among the first things that go.
void tst_MolkViewForm::deafBeforeAnythingOfItGoes()
{
    class LoudNetlist : public FATHOM::RtlNetlist
    {
    public:
        explicit LoudNetlist(Standin::Host *informed)
            : host(informed)
        {
        }
        ~LoudNetlist() override { host->events().send(filesChanged()); }
        FATHOM::RtlNet *findNet(const QString &) const override { return nullptr; }

    private:
        Standin::Host *host;
    };
    newView();
    document()->setRtlNetlist(new LoudNetlist(&bench->host));

    // An event that reached it now would make it raise a banner on a form that has gone.
    view.reset();

    QCOMPARE(bench->host.callsOf({"send"}).size(), 1);
}

void tst_MolkViewForm::okHidesTheChangedBanner()
{
    newView();
    auto *banner = child<QWidget>(view, "widget_2");
    view->show();
    banner->show();
    QVERIFY(banner->isVisible());

    QTest::mouseClick(child<QPushButton>(banner, "okBtn"), Qt::LeftButton);

    QVERIFY(banner->isHidden());
}

void tst_MolkViewForm::narrowViewCutsOffNoCore()
{
    QVERIFY(openCores(16));
    view->resize(view->minimumSizeHint().width(), 600);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));

    const auto *tree = child<QTreeWidget>(view, "treeWidget");
    QCOMPARE(tree->horizontalScrollBar()->maximum(), 0);
    const auto *last = tree->topLevelItem(15);
    const int textWidth = tree->fontMetrics().horizontalAdvance(last->text(0));
    QVERIFY(tree->visualItemRect(last).width() >= textWidth);
    const auto *dock = child<QDockWidget>(view, "dockWidget");
    QVERIFY(dock->width() >= dock->fontMetrics().horizontalAdvance(dock->windowTitle()));
}

MOLK_TEST_MAIN(tst_MolkViewForm)
#include "tst_molkviewform.moc"
