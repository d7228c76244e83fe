// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "childenvironment.h"
#include "testmain.h"
#include "windowwatch.h"
#include "workbenchfixture.h"

#include "host/host.h"

#include "core/iview.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QProcess>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

// A plug-in can be loaded once in a process, so each state has a process of its own: the program
// calls itself with "--state" and the state's name, brings the workbench into that state, ends the
// event loop there, and takes everything down.

namespace {

using State = std::function<void(WorkbenchFixture &)>;

struct NamedState
{
    const char *name;
    State reach;
};

} // namespace

static void openProject(WorkbenchFixture &bench)
{
    QStringList errors;
    bench.window()->openProject(bench.makeProject("p.eda.yml", {"a.molk"}), QString(), &errors);
}

static void openView(WorkbenchFixture &bench)
{
    openProject(bench);
    bench.window()->openPaths({bench.makeConfiguration("a.molk")});
}

static void openModifiedView(WorkbenchFixture &bench)
{
    openView(bench);
    bench.modify();
}

// Calls \a act from the loop of each modal window that is shown.
static void onModalWindow(const std::function<void(QWidget *)> &act)
{
    class Watcher : public WindowWatch
    {
    public:
        explicit Watcher(const std::function<void(QWidget *)> &what)
            : act(what)
        {
            setParent(qApp);
        }

    protected:
        bool asks(const QWidget *window) const override { return isQuestion(window); }
        void meet(QWidget *window) override { act(window); }

    private:
        std::function<void(QWidget *)> act;
    };
    new Watcher(act);
}

// A state that isn't reached proves nothing.
static bool reached = true;

static void quitAsReached()
{
    reached = true;
    QApplication::quit();
}

static void quitInModalWindow()
{
    reached = false;
    onModalWindow([](QWidget *) { quitAsReached(); });
}

static void openProbeDialog(WorkbenchFixture &bench)
{
    openModifiedView(bench);
    auto *tree = bench.documents()->activeView()->findChild<QTreeWidget *>("treeProbeIn");
    emit tree->itemDoubleClicked(tree->topLevelItem(0), 0);
}

static void openSearchDialog(WorkbenchFixture &bench)
{
    reached = false;
    onModalWindow([](QWidget *window) {
        if (auto *add = window->findChild<QToolButton *>("btnAdd"))
            add->click();
        else
            quitAsReached();
    });
    openProbeDialog(bench);
}

static void askWhetherToSave(WorkbenchFixture &bench)
{
    openModifiedView(bench);
    bench.action("&Close")->trigger();
}

static void runWizard(WorkbenchFixture &bench)
{
    openProject(bench);
    bench.window()->findChild<QAction *>("MB.Wizard.MOLK")->trigger();
}

static void readDesign(WorkbenchFixture &bench)
{
    reached = false;
    bench.runtime.services().extraction().duringNetlist(quitAsReached);
    openView(bench);
}

static void raiseBanner(WorkbenchFixture &bench)
{
    openModifiedView(bench);
    bench.runtime.services().events().send(
        Standin::Event("TE.Option.Change", {{"option", "TopModule"}}));
}

static void leaveDeletionToTheLoop(WorkbenchFixture &bench)
{
    openView(bench);
    bench.documents()->closeView(bench.documents()->activeView());
}

static const NamedState states[] = {
    {"nothing-open",
     [](WorkbenchFixture &) {
     }},
    {"project-open", openProject},
    {"view-open", openView},
    {"view-modified", openModifiedView},
    {"several-views",
     [](WorkbenchFixture &bench) {
         openModifiedView(bench);
         bench.window()->openPaths({bench.makeConfiguration("b.molk")});
         bench.modify();
         bench.window()->openPaths({bench.path("chip.v")});
     }},
    {"view-just-closed", leaveDeletionToTheLoop},
    {"banner-shown", raiseBanner},
    {"window-closed",
     [](WorkbenchFixture &bench) {
         openView(bench), bench.window()->close();
     }},
    {"probe-dialog-open",
     [](WorkbenchFixture &bench) {
         quitInModalWindow(), openProbeDialog(bench);
     }},
    {"search-dialog-open", openSearchDialog},
    {"close-question-open",
     [](WorkbenchFixture &bench) {
         quitInModalWindow(), askWhetherToSave(bench);
     }},
    {"wizard-open",
     [](WorkbenchFixture &bench) {
         quitInModalWindow(), runWizard(bench);
     }},
    {"design-being-read", readDesign},
};

static int reachAndShutDown(const QString &name, int &argc, char *argv[])
{
    QApplication app(argc, argv);
    for (const NamedState &state : states) {
        if (name != QLatin1String(state.name))
            continue;
        WorkbenchFixture bench;
        if (!bench.start())
            return 2;
        QTimer::singleShot(0, &app, [&] {
            state.reach(bench);
            QApplication::quit();
        });
        QApplication::exec();
        return reached ? 0 : 4;
    }
    return 3;
}

class ShutdownTest : public QObject
{
    Q_OBJECT

private slots:
    void everyStateEndsWell_data();
    void everyStateEndsWell();
};

void ShutdownTest::everyStateEndsWell_data()
{
    QTest::addColumn<QString>("state");
    for (const NamedState &state : states)
        QTest::newRow(state.name) << QString(QLatin1String(state.name));
}

void ShutdownTest::everyStateEndsWell()
{
    QFETCH(QString, state);
    QProcess process;
    const QTemporaryDir folder;
    QProcessEnvironment environment = childEnvironment(folder.path());
    environment.insert("QT_LOGGING_RULES", "default.debug=false");
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"--state", state});
    QVERIFY(process.waitForFinished(60000));

    QByteArrayList said = process.readAllStandardError().split('\n');
    said.erase(std::remove_if(said.begin(), said.end(),
                              [](const QByteArray &line) {
                                  return line.isEmpty()
                                      || line.startsWith("This plugin does not support");
                              }),
               said.end());
    QCOMPARE(said.join('\n'), QByteArray());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--state") == 0)
        return reachAndShutDown(QString::fromLocal8Bit(argv[2]), argc, argv);
    QCoreApplication app(argc, argv);
    MOLK_RUN_TEST(ShutdownTest)
}

#include "tst_shutdown.moc"
