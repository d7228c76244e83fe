// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkfile.h"
#include "newfiledialog.h"
#include "testwidgetsmain.h"

#include "core/iproject.h"
#include "host/host.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace MOLK;

namespace {

class RecordingProject : public Core::IProject
{
public:
    bool addFile(const QString &path) override
    {
        added.append(path);
        if (onAdd)
            onAdd();
        return true;
    }

    QStringList added;
    std::function<void()> onAdd;
};

} // namespace

class tst_NewFileDialog : public QObject
{
    Q_OBJECT

private slots:
    void formHasItsProperties();
    void directoryIsTheGivenOneOrHome();
    void checkBoxFollowsTheProject();
    void projectIsAskedTwice();

    void fileIsMadeAndTheDialogCloses();
    void madeFileIsConfigurationWithoutCores();
    void fileIsAddedToTheProject();
    void clearedBoxAddsNothing();
    void projectClosedMeanwhileIsNoTrouble();
    void projectMayEndTheDialog();

    void inputIsRefusedInRed_data();
    void inputIsRefusedInRed();
    void directoryThatCannotBeMadeIsRefused();
    void existingFileIsNeverTouched();
    void directoryIsMadeBeforeTheFileIsLookedFor();
    void danglingLinkIsNotWrittenThrough();
    void messageIsReplacedByTheNext();
    void markupInAMessageIsShownAsItIs();
    void blanksAndEndingsInTheName_data();
    void blanksAndEndingsInTheName();
    void blanksInFrontOfTheDirectoryLookElsewhere();

    void browseTakesTheChosenDirectory();
    void cancelledBrowseKeepsTheDirectory();
    void dialogMayGoWhileItBrowses();
    void dialogMayGoWhileItReportsAFailure();
    void cancelMakesNothing();
};

template<typename Type>
static Type *child(const QWidget &dialog, const QString &name)
{
    return dialog.findChild<Type *>(name);
}

static void fill(const NewFileDialog &dialog, const QString &name, const QString &dir)
{
    child<QLineEdit>(dialog, "editName")->setText(name);
    child<QLineEdit>(dialog, "editCreateIn")->setText(dir);
}

static void pressOk(const NewFileDialog &dialog)
{
    child<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->click();
}

static QString info(const NewFileDialog &dialog)
{
    return child<QLabel>(dialog, "labelInfo")->text();
}

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

void tst_NewFileDialog::formHasItsProperties()
{
    Standin::Host host;
    const NewFileDialog dialog("/tmp", nullptr);

    QCOMPARE(dialog.objectName(), QString("MOLK__NewFileDialog"));
    QCOMPARE(dialog.size(), QSize(712, 138));
    QCOMPARE(dialog.windowTitle(), QString("New MOLK Config File"));
    QCOMPARE(child<QWidget>(dialog, "widget")->minimumSize(), QSize(500, 0));
    const auto *grid = qobject_cast<QGridLayout *>(child<QWidget>(dialog, "widget")->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->verticalSpacing(), 10);
    QCOMPARE(grid->contentsMargins().left(), 0);
    QCOMPARE(grid->contentsMargins().right(), 0);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), child<QLabel>(dialog, "labelName"));
    QCOMPARE(grid->itemAtPosition(0, 1)->widget(), child<QLineEdit>(dialog, "editName"));
    QCOMPARE(grid->itemAtPosition(0, 2)->widget(), child<QLabel>(dialog, "label"));
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), child<QLabel>(dialog, "labelCreateIn"));
    QCOMPARE(grid->itemAtPosition(1, 1)->widget(), child<QLineEdit>(dialog, "editCreateIn"));
    QCOMPARE(grid->itemAtPosition(1, 2)->widget(), child<QPushButton>(dialog, "btnBrowse"));
    QCOMPARE(grid->itemAtPosition(2, 1)->widget(),
             child<QCheckBox>(dialog, "checkBoxAddToCurrent"));
    QCOMPARE(grid->itemAtPosition(2, 2)->widget(),
             child<QCheckBox>(dialog, "checkBoxAddToCurrent"));

    QCOMPARE(child<QLabel>(dialog, "labelName")->text(), QString("Name:"));
    QCOMPARE(child<QLineEdit>(dialog, "editName")->text(), QString());
    QCOMPARE(child<QLineEdit>(dialog, "editName")->placeholderText(), QString("Enter a name"));
    QCOMPARE(child<QLabel>(dialog, "label")->text(), QString(".molk"));
    QCOMPARE(child<QLabel>(dialog, "labelCreateIn")->text(), QString("Create in:"));
    QCOMPARE(child<QPushButton>(dialog, "btnBrowse")->text(), QString("Browse..."));
    QCOMPARE(child<QCheckBox>(dialog, "checkBoxAddToCurrent")->text(),
             QString("Add to current project"));
    QCOMPARE(info(dialog), QString());
    QCOMPARE(child<QLabel>(dialog, "labelInfo")->styleSheet(), QString("QLabel { color: red }"));
    const auto *buttons = child<QDialogButtonBox>(dialog, "buttonBox");
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(dialog.layout()->objectName(), QString("verticalLayout"));
    QCOMPARE(dialog.layout()->itemAt(1)->layout()->objectName(), QString("horizontalLayout"));
}

void tst_NewFileDialog::directoryIsTheGivenOneOrHome()
{
    Standin::Host host;

    const NewFileDialog given("/some/dir", nullptr);
    QCOMPARE(child<QLineEdit>(given, "editCreateIn")->text(),
             QDir::toNativeSeparators("/some/dir"));
    const NewFileDialog home(QString(), nullptr);
    QCOMPARE(child<QLineEdit>(home, "editCreateIn")->text(),
             QDir::toNativeSeparators(QDir::homePath()));
}

void tst_NewFileDialog::checkBoxFollowsTheProject()
{
    Standin::Host host;
    const NewFileDialog without("/tmp", nullptr);
    QVERIFY(!child<QCheckBox>(without, "checkBoxAddToCurrent")->isEnabled());
    QVERIFY(!child<QCheckBox>(without, "checkBoxAddToCurrent")->isChecked());

    RecordingProject project;
    host.setCurrentProject(&project);
    const NewFileDialog with("/tmp", nullptr);
    QVERIFY(child<QCheckBox>(with, "checkBoxAddToCurrent")->isEnabled());
    QVERIFY(child<QCheckBox>(with, "checkBoxAddToCurrent")->isChecked());
    host.setCurrentProject(nullptr);
}

void tst_NewFileDialog::projectIsAskedTwice()
{
    Standin::Host host;

    const NewFileDialog dialog("/tmp", nullptr);

    QCOMPARE(host.calls(), QStringList({"currentProject", "currentProject"}));
}

void tst_NewFileDialog::fileIsMadeAndTheDialogCloses()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    QSignalSpy accepted(&dialog, SIGNAL(accepted()));
    fill(dialog, "probes", dir.path());

    pressOk(dialog);

    QCOMPARE(accepted.count(), 1);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(contentOf(dir.filePath("probes.molk")),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<MOLK_CONFIG>\n"
                        "    <Version>1.0</Version>\n"
                        "</MOLK_CONFIG>\n"));
    QCOMPARE(info(dialog), QString());
}

void tst_NewFileDialog::madeFileIsConfigurationWithoutCores()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "probes", dir.path());
    pressOk(dialog);

    QVERIFY(checkMOLKFile(dir.filePath("probes.molk")));
    bool ok = false;
    QVERIFY(readMOLKConfigFromXml(dir.filePath("probes.molk"), &ok, nullptr).isEmpty());
    QVERIFY(ok);
}

void tst_NewFileDialog::fileIsAddedToTheProject()
{
    Standin::Host host;
    QTemporaryDir dir;
    RecordingProject project;
    host.setCurrentProject(&project);
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "sub/../probes", dir.path());
    QVERIFY(QDir(dir.path()).mkdir("sub"));

    pressOk(dialog);

    QCOMPARE(project.added, QStringList(dir.filePath("probes.molk")));
    host.setCurrentProject(nullptr);
}

void tst_NewFileDialog::clearedBoxAddsNothing()
{
    Standin::Host host;
    QTemporaryDir dir;
    RecordingProject project;
    host.setCurrentProject(&project);
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "probes", dir.path());
    child<QCheckBox>(dialog, "checkBoxAddToCurrent")->click();
    host.clearCalls();

    pressOk(dialog);

    QCOMPARE(project.added, QStringList());
    QCOMPARE(host.calls(), QStringList());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    host.setCurrentProject(nullptr);
}

void tst_NewFileDialog::projectClosedMeanwhileIsNoTrouble()
{
    Standin::Host host;
    QTemporaryDir dir;
    RecordingProject project;
    host.setCurrentProject(&project);
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "probes", dir.path());
    host.setCurrentProject(nullptr);
    host.clearCalls();

    pressOk(dialog);

    QVERIFY(child<QCheckBox>(dialog, "checkBoxAddToCurrent")->isChecked());
    QCOMPARE(host.calls(), QStringList("currentProject"));
    QCOMPARE(project.added, QStringList());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void tst_NewFileDialog::projectMayEndTheDialog()
{
    Standin::Host host;
    QTemporaryDir dir;
    RecordingProject project;
    host.setCurrentProject(&project);
    QPointer<NewFileDialog> dialog = new NewFileDialog(dir.path(), nullptr);
    fill(*dialog, "probes", dir.path());
    project.onAdd = [&] {
        delete dialog;
    };

    dialog->accept();

    QVERIFY(!dialog);
    host.setCurrentProject(nullptr);
}

void tst_NewFileDialog::inputIsRefusedInRed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dir");
    QTest::addColumn<QString>("message");
    QTest::newRow("no-name") << ""
                             << "/tmp"
                             << "Please enter a name.";
    QTest::newRow("no-path") << "a"
                             << ""
                             << "Please enter a path.";
    QTest::newRow("neither") << ""
                             << ""
                             << "Please enter a name.";
}

void tst_NewFileDialog::inputIsRefusedInRed()
{
    QFETCH(QString, name);
    QFETCH(QString, dir);
    Standin::Host host;
    NewFileDialog dialog(QString(), nullptr);
    QSignalSpy finished(&dialog, SIGNAL(finished(int)));
    fill(dialog, name, dir);

    pressOk(dialog);

    QTEST(info(dialog), "message");
    QCOMPARE(finished.count(), 0);
}

void tst_NewFileDialog::directoryThatCannotBeMadeIsRefused()
{
    Standin::Host host;
    QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    NewFileDialog dialog(dir.path(), nullptr);
    const QString below = dir.filePath("file/sub");
    fill(dialog, "a", below);

    pressOk(dialog);

    QCOMPARE(info(dialog), "Cannot make the path " + below + ".");
    QVERIFY(dialog.result() != QDialog::Accepted);
}

void tst_NewFileDialog::existingFileIsNeverTouched()
{
    Standin::Host host;
    QTemporaryDir dir;
    QFile file(dir.filePath("a.molk"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("mine") == 4);
    file.close();
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "./a", dir.path() + "/");

    pressOk(dialog);

    QCOMPARE(info(dialog), "File " + dir.filePath("a.molk") + " already exists.");
    QCOMPARE(contentOf(dir.filePath("a.molk")), QByteArray("mine"));
    QVERIFY(dialog.result() != QDialog::Accepted);
}

void tst_NewFileDialog::directoryIsMadeBeforeTheFileIsLookedFor()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    // The directory is named through one that doesn't exist yet.
    QFile file(dir.filePath("a.molk"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    fill(dialog, "../../a", dir.filePath("new/deep"));

    pressOk(dialog);

    QVERIFY(QDir(dir.filePath("new/deep")).exists());
    QCOMPARE(info(dialog), "File " + dir.filePath("a.molk") + " already exists.");
}

void tst_NewFileDialog::danglingLinkIsNotWrittenThrough()
{
    Standin::Host host;
    QTemporaryDir dir;
    QVERIFY(QFile::link(dir.filePath("elsewhere"), dir.filePath("a.molk")));
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "a", dir.path());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), &dialog);
        QCOMPARE(box->windowTitle(), QString("Error"));
        QVERIFY(box->text().startsWith("Can not create file "
                                       + QDir::toNativeSeparators(dir.filePath("a.molk")) + "\n"));
        QVERIFY(box->text().section('\n', 1) != QString());
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    pressOk(dialog);

    QVERIFY(!QFile::exists(dir.filePath("elsewhere")));
    QVERIFY(dialog.result() != QDialog::Accepted);
    QCOMPARE(info(dialog), QString());
}

void tst_NewFileDialog::messageIsReplacedByTheNext()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "", dir.path());
    pressOk(dialog);
    QCOMPARE(info(dialog), QString("Please enter a name."));
    fill(dialog, "a", "");
    pressOk(dialog);
    QCOMPARE(info(dialog), QString("Please enter a path."));
    fill(dialog, "a", dir.path());

    pressOk(dialog);

    // Nothing clears it on success: the dialog goes.
    QCOMPARE(info(dialog), QString("Please enter a path."));
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void tst_NewFileDialog::markupInAMessageIsShownAsItIs()
{
    Standin::Host host;
    const NewFileDialog dialog("/tmp", nullptr);

    QCOMPARE(child<QLabel>(dialog, "labelInfo")->textFormat(), Qt::PlainText);
}

void tst_NewFileDialog::blanksAndEndingsInTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("trailing-blanks") << "a  "
                                     << "a  .molk";
    QTest::newRow("leading-blanks") << "  a"
                                    << "  a.molk";
    QTest::newRow("blanks-alone") << "  "
                                  << "  .molk";
    QTest::newRow("ending-given") << "a.molk"
                                  << "a.molk.molk";
    QTest::newRow("separator") << "sub/a"
                               << "sub/a.molk";
}

void tst_NewFileDialog::blanksAndEndingsInTheName()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    Standin::Host host;
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir("sub"));
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, name, dir.path());

    pressOk(dialog);

    QVERIFY(QFile::exists(dir.filePath(file)));
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void tst_NewFileDialog::blanksInFrontOfTheDirectoryLookElsewhere()
{
    Standin::Host host;
    QTemporaryDir dir;
    QTemporaryDir current;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(current.path()));
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "a", "  " + dir.path());

    pressOk(dialog);

    QVERIFY(QDir::setCurrent(before));
    // With the blanks the path is a relative one, whose directory was made.
    QVERIFY(QDir(current.path() + "/  " + dir.path()).exists());
    QVERIFY(QFile::exists(dir.filePath("a.molk")));
}

void tst_NewFileDialog::browseTakesTheChosenDirectory()
{
    Standin::Host host;
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir("sub"));
    NewFileDialog dialog(dir.path(), nullptr);
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([&](QFileDialog *chooser) {
        QCOMPARE(chooser->parentWidget(), &dialog);
        QCOMPARE(chooser->windowTitle(), QString("Select Directory"));
        QCOMPARE(chooser->directory(), QDir(dir.path()));
        QVERIFY(chooser->testOption(QFileDialog::ShowDirsOnly));
        chooser->selectFile("sub");
        QMetaObject::invokeMethod(chooser, "accept");
    });

    child<QPushButton>(dialog, "btnBrowse")->click();

    QCOMPARE(child<QLineEdit>(dialog, "editCreateIn")->text(), dir.filePath("sub"));
}

void tst_NewFileDialog::cancelledBrowseKeepsTheDirectory()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    ModalDriver driver;
    driver.expectDialog<QFileDialog>(
        [](QFileDialog *chooser) { QTest::keyClick(chooser, Qt::Key_Escape); });

    child<QPushButton>(dialog, "btnBrowse")->click();

    QCOMPARE(child<QLineEdit>(dialog, "editCreateIn")->text(), dir.path());
}

void tst_NewFileDialog::dialogMayGoWhileItBrowses()
{
    Standin::Host host;
    QPointer<NewFileDialog> dialog = new NewFileDialog("/tmp", nullptr);
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([&](QFileDialog *) { delete dialog; });

    QMetaObject::invokeMethod(dialog, "onBrowse");

    QVERIFY(!dialog);
}

void tst_NewFileDialog::dialogMayGoWhileItReportsAFailure()
{
    Standin::Host host;
    QTemporaryDir dir;
    QVERIFY(QFile::link(dir.filePath("elsewhere"), dir.filePath("a.molk")));
    QPointer<NewFileDialog> dialog = new NewFileDialog(dir.path(), nullptr);
    fill(*dialog, "a", dir.path());
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete dialog; });

    dialog->accept();

    QVERIFY(!dialog);
}

void tst_NewFileDialog::cancelMakesNothing()
{
    Standin::Host host;
    QTemporaryDir dir;
    NewFileDialog dialog(dir.path(), nullptr);
    fill(dialog, "a", dir.path());

    child<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Cancel)->click();

    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList());
}

MOLK_TEST_MAIN(tst_NewFileDialog)
#include "tst_newfiledialog.moc"
