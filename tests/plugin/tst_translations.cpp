// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designchanges.h"
#include "managertest.h"
#include "modaldriver.h"
#include "molkfilewizardfactory.h"
#include "newfiledialog.h"
#include "reloadbanner.h"
#include "saving.h"
#include "shownview.h"
#include "testwidgetsmain.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTranslator>

using namespace MOLK;

// Which texts a translation reaches, and under which context, and which it must not.
class tst_Translations : public ManagerTest
{
    Q_OBJECT

private slots:
    void init();

    void formOfTheView();
    void questionAboutClosing();
    void bannersOfTheFile();
    void bannersOfTheDesign();
    void wizard();
    void formOfTheWizard();
    void messagesOfTheWizard_data();
    void messagesOfTheWizard();
    void chooserOfTheWizard();

    void saveActionIsNotTranslated();
    void boxesOfTheViewAreNotTranslated();
    void failureOfTheWizardIsNotTranslated();
};

namespace {

// Puts the context in front of each text of ours.
class ContextTranslator : public QTranslator
{
public:
    ContextTranslator() { QCoreApplication::installTranslator(this); }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        const QString owner = QLatin1String(context);
        if (!owner.startsWith("MOLK"))
            return QString();
        return '[' + owner + "] " + QLatin1String(text);
    }

    bool isEmpty() const override { return false; }
};

} // namespace

static QString labelText(const QWidget *parent, const QString &name)
{
    return child<QLabel>(parent, name)->text();
}

static QString buttonText(const QWidget *parent, const QString &name)
{
    return child<QAbstractButton>(parent, name)->text();
}

void tst_Translations::init()
{
    bench->host.setCurrentProject(nullptr);
}

void tst_Translations::formOfTheView()
{
    const ContextTranslator translator;
    const MolkView view;

    QCOMPARE(child<QDockWidget>(&view, "dockWidget")->windowTitle(),
             QString("[MOLK::MolkView] MOLK Core"));
    QCOMPARE(child<QWidget>(&view, "widget_2")->windowTitle(),
             QString("[MOLK::ChangedBanner] Form"));
    QCOMPARE(labelText(&view, "warningText"),
             QString("[MOLK::ChangedBanner] Netlist File has been changed."));
    QCOMPARE(buttonText(&view, "okBtn"), QString("[MOLK::ChangedBanner] OK"));
}

void tst_Translations::questionAboutClosing()
{
    const ContextTranslator translator;
    const QString file = bench->writeCores(1);
    const auto view = bench->openView(file);
    QVERIFY(view);
    view->onModified();
    ModalDriver driver;
    driver.expectMessage("[MOLK::MolkView] Save", "[MOLK::MolkView] " + closeQuestion(file),
                         QMessageBox::Discard);

    QVERIFY(view->close());
}

void tst_Translations::bannersOfTheFile()
{
    const ContextTranslator translator;

    const ReloadBanner changed(ReloadBanner::FileChanged, "/a", nullptr);
    QCOMPARE(labelText(&changed, "labelFile"),
             QString("[MOLK::ReloadBanner] The file '/a' changed on disk.\n"
                     "Do you want to reload?"));
    QCOMPARE(buttonText(&changed, "btnA"), QString("[MOLK::ReloadBanner] Reload"));
    QCOMPARE(buttonText(&changed, "btnB"), QString("[MOLK::ReloadBanner] Cancel"));

    const ReloadBanner removed(ReloadBanner::FileRemoved, "/a", nullptr);
    QCOMPARE(labelText(&removed, "labelFile"),
             QString("[MOLK::ReloadBanner] The file '/a' has been removed on disk.\n"
                     "Do you still want to keep it?"));
    QCOMPARE(buttonText(&removed, "btnA"), QString("[MOLK::ReloadBanner] Keep It"));
    QCOMPARE(buttonText(&removed, "btnB"), QString("[MOLK::ReloadBanner] Close"));
}

void tst_Translations::bannersOfTheDesign()
{
    const ContextTranslator translator;
    const ShownView shown(*bench, bench->writeCores(1));
    QVERIFY(shown.view);

    bench->host.events().send(filesChanged());

    QCOMPARE(bannerText(shown.banner()), filesText());
    QCOMPARE(buttonText(shown.banner(), "btnA"), QString("[MOLK::ReloadBanner] Reload"));
}

void tst_Translations::wizard()
{
    const ContextTranslator translator;
    const MolkFileWizardFactory factory;

    QCOMPARE(factory.id(), QString("MB.Wizard.MOLK"));
    QCOMPARE(factory.name(), QString("[MOLK::MolkFileWizardFactory] MOLK Config File"));
    QCOMPARE(factory.description(),
             QString("[MOLK::MolkFileWizardFactory] Create a MOLK Config File."));
}

void tst_Translations::formOfTheWizard()
{
    const ContextTranslator translator;
    const NewFileDialog dialog("/tmp", nullptr);
    const QString context = "[MOLK::NewFileDialog] ";

    QCOMPARE(dialog.windowTitle(), context + "New MOLK Config File");
    QCOMPARE(labelText(&dialog, "labelName"), context + "Name:");
    QCOMPARE(labelText(&dialog, "label"), context + ".molk");
    QCOMPARE(labelText(&dialog, "labelCreateIn"), context + "Create in:");
    QCOMPARE(child<QLineEdit>(&dialog, "editName")->placeholderText(), context + "Enter a name");
    QCOMPARE(buttonText(&dialog, "btnBrowse"), context + "Browse...");
    QCOMPARE(buttonText(&dialog, "checkBoxAddToCurrent"), context + "Add to current project");
}

void tst_Translations::messagesOfTheWizard_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("message");

    const QString existing = bench->writeCores(1);
    QTest::newRow("no-name") << ""
                             << "/tmp"
                             << "Please enter a name.";
    QTest::newRow("no-path") << "a"
                             << ""
                             << "Please enter a path.";
    QTest::newRow("no-directory") << "a" << existing + "/sub"
                                  << "Cannot make the path " + existing + "/sub.";
    QTest::newRow("existing-file")
        << "a" << bench->dir.path() << "File " + existing + " already exists.";
}

void tst_Translations::messagesOfTheWizard()
{
    QFETCH(QString, name);
    QFETCH(QString, directory);
    QFETCH(QString, message);
    const ContextTranslator translator;
    bench->writeCores(1);
    NewFileDialog dialog("/tmp", nullptr);
    child<QLineEdit>(&dialog, "editName")->setText(name);
    child<QLineEdit>(&dialog, "editCreateIn")->setText(directory);

    dialog.accept();

    QCOMPARE(labelText(&dialog, "labelInfo"), "[MOLK::NewFileDialog] " + message);
}

void tst_Translations::chooserOfTheWizard()
{
    const ContextTranslator translator;
    NewFileDialog dialog("/tmp", nullptr);
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([](QFileDialog *chooser) {
        QCOMPARE(chooser->windowTitle(), QString("[MOLK::NewFileDialog] Select Directory"));
        chooser->reject();
    });

    child<QPushButton>(&dialog, "btnBrowse")->click();
}

void tst_Translations::saveActionIsNotTranslated()
{
    const ContextTranslator translator;

    QVERIFY(open(bench->writeCores(1)));

    QCOMPARE(actionState(), QString("&Save \"a.molk\" | Save \"a.molk\" | off"));
}

void tst_Translations::boxesOfTheViewAreNotTranslated()
{
    const ContextTranslator translator;
    const auto view = bench->openView(bench->writeCores(1));
    QVERIFY(view);
    auto *document = documentOf(view);
    ModalDriver driver;

    driver.expectNotice(QMessageBox::Warning, "Remove MOLK", "The only MOLK can not be removed.");
    document->removeCore(0);

    for (int i = 1; i < 16; ++i)
        document->addCore(i);
    driver.expectNotice(QMessageBox::Warning, "Warning", "Support 16 MOLKs at most.");
    document->addCore(16);

    driver.expectMessage("Remove MOLk", "Do you want to remove MOLK 3 ?", QMessageBox::Cancel);
    document->removeCore(3);

    expectFaults(driver, view.get(), [] {
        QStringList lines;
        for (int i = 1; i < 16; ++i)
            lines.append(QString("Molk %1: At least one Probe In port or Probe Out port should be "
                                 "enabled")
                             .arg(i));
        return lines.join('\n');
    }());
    QVERIFY(!view->save());

    bench->host.design().setSourceFiles({});
    driver.expectNotice(QMessageBox::Critical, "Error", "Design files are not exist.");
    QVERIFY(!view->readRtlNetlist());

    bench->write("a.molk", "no");
    driver.expectNotice(QMessageBox::Warning, "Reload Molk", "Invalid MOLK file.");
    view->onBannerReload();

    const QString missing = bench->path("missing.molk");
    driver.expectNotice(QMessageBox::Critical, "Error", missing + " open file failed.");
    QVERIFY(!open(missing));
}

void tst_Translations::failureOfTheWizardIsNotTranslated()
{
    const ContextTranslator translator;
    const QString path = bench->path("none/a.molk");
    NewFileDialog dialog("/tmp", nullptr);
    child<QLineEdit>(&dialog, "editName")->setText("none/a");
    child<QLineEdit>(&dialog, "editCreateIn")->setText(bench->dir.path());
    ModalDriver driver;
    driver.expectNotice(QMessageBox::Critical, "Error",
                        "Can not create file " + path + "\nNo such file or directory");

    dialog.accept();
}

MOLK_TEST_MAIN(tst_Translations)
#include "tst_translations.moc"
