// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkfile.h"
#include "newfiletest.h"
#include "testwidgetsmain.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace MOLK;

class tst_NewFileCreation : public NewFileTest
{
    Q_OBJECT

private slots:
    void fileIsMadeAndTheDialogCloses();
    void madeFileIsConfigurationWithoutCores();
    void fileIsAddedToTheProject();
    void clearedBoxAddsNothing();
    void projectClosedMeanwhileIsNoTrouble();
    void projectMayEndTheDialog();
    void cancelMakesNothing();

    void inputIsRefusedInRed_data();
    void inputIsRefusedInRed();
    void directoryThatCannotBeMadeIsRefused();
    void existingFileIsNeverTouched();
    void directoryIsMadeBeforeTheFileIsLookedFor();
    void danglingLinkIsNotWrittenThrough();
    void directoryStaysIfTheFileCannotBeMade();
    void messageIsReplacedByTheNext();
    void longMessageNeedsNoWideDialog();
    void blanksAndEndingsInTheName_data();
    void blanksAndEndingsInTheName();
    void blanksInFrontOfTheDirectoryLookElsewhere();
    void dialogMayGoWhileItReportsAFailure();
};

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

void tst_NewFileCreation::fileIsMadeAndTheDialogCloses()
{
    openDialog();
    QSignalSpy accepted(dialog.data(), SIGNAL(accepted()));
    fill("probes");

    pressOk();

    QCOMPARE(accepted.count(), 1);
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(contentOf(dir->filePath("probes.molk")),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<MOLK_CONFIG>\n"
                        "    <Version>1.0</Version>\n"
                        "</MOLK_CONFIG>\n"));
    QCOMPARE(info(), QString());
}

void tst_NewFileCreation::madeFileIsConfigurationWithoutCores()
{
    openDialog();
    fill("probes");
    pressOk();

    QVERIFY(checkMOLKFile(dir->filePath("probes.molk")));
    bool ok = false;
    QVERIFY(readMOLKConfigFromXml(dir->filePath("probes.molk"), &ok, nullptr).isEmpty());
    QVERIFY(ok);
}

void tst_NewFileCreation::fileIsAddedToTheProject()
{
    openProject();
    openDialog();
    fill("sub/../probes");
    QVERIFY(QDir(dir->path()).mkdir("sub"));

    pressOk();

    QCOMPARE(project.added, QStringList(dir->filePath("probes.molk")));
}

void tst_NewFileCreation::clearedBoxAddsNothing()
{
    openProject();
    openDialog();
    fill("probes");
    child<QCheckBox>("checkBoxAddToCurrent")->click();
    host->clearCalls();

    pressOk();

    QCOMPARE(project.added, QStringList());
    QCOMPARE(host->calls(), QStringList());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void tst_NewFileCreation::projectClosedMeanwhileIsNoTrouble()
{
    openProject();
    openDialog();
    fill("probes");
    host->setCurrentProject(nullptr);
    host->clearCalls();

    pressOk();

    QVERIFY(child<QCheckBox>("checkBoxAddToCurrent")->isChecked());
    QCOMPARE(host->calls(), QStringList("currentProject"));
    QCOMPARE(project.added, QStringList());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void tst_NewFileCreation::projectMayEndTheDialog()
{
    openProject();
    openDialog();
    fill("probes");
    project.onAdd = [&] {
        delete dialog;
    };

    dialog->accept();

    QVERIFY(!dialog);
}

void tst_NewFileCreation::cancelMakesNothing()
{
    openDialog();
    fill("a");

    child<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Cancel)->click();

    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QCOMPARE(QDir(dir->path()).entryList(QDir::Files), QStringList());
}

void tst_NewFileCreation::inputIsRefusedInRed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("directory");
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

void tst_NewFileCreation::inputIsRefusedInRed()
{
    QFETCH(QString, name);
    QFETCH(QString, directory);
    openDialog(QString());
    QSignalSpy finished(dialog.data(), SIGNAL(finished(int)));
    fill(name, directory);

    pressOk();

    QTEST(info(), "message");
    QCOMPARE(finished.count(), 0);
}

void tst_NewFileCreation::directoryThatCannotBeMadeIsRefused()
{
    QFile file(dir->filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    openDialog();
    const QString below = dir->filePath("file/sub");
    fill("a", below);

    pressOk();

    QCOMPARE(info(), "Cannot make the path " + below + ".");
    QVERIFY(dialog->result() != QDialog::Accepted);
}

void tst_NewFileCreation::existingFileIsNeverTouched()
{
    QFile file(dir->filePath("a.molk"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("mine") == 4);
    file.close();
    openDialog();
    fill("./a", dir->path() + "/");

    pressOk();

    QCOMPARE(info(), "File " + dir->filePath("a.molk") + " already exists.");
    QCOMPARE(contentOf(dir->filePath("a.molk")), QByteArray("mine"));
    QVERIFY(dialog->result() != QDialog::Accepted);
}

void tst_NewFileCreation::directoryIsMadeBeforeTheFileIsLookedFor()
{
    openDialog();
    // The directory is named through one that doesn't exist yet.
    QFile file(dir->filePath("a.molk"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    fill("../../a", dir->filePath("new/deep"));

    pressOk();

    QVERIFY(QDir(dir->filePath("new/deep")).exists());
    QCOMPARE(info(), "File " + dir->filePath("a.molk") + " already exists.");
}

void tst_NewFileCreation::danglingLinkIsNotWrittenThrough()
{
    QVERIFY(QFile::link(dir->filePath("elsewhere"), dir->filePath("a%2.molk")));
    openDialog();
    fill("a%2");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), dialog.data());
        QCOMPARE(box->windowTitle(), QString("Error"));
        // What looks like a place to fill in the name stays as it is.
        QCOMPARE(box->text(),
                 "Can not create file " + QDir::toNativeSeparators(dir->filePath("a%2.molk"))
                     + "\nFile exists");
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });

    pressOk();

    QVERIFY(!QFile::exists(dir->filePath("elsewhere")));
    QVERIFY(dialog->result() != QDialog::Accepted);
    QCOMPARE(info(), QString());
}

void tst_NewFileCreation::directoryStaysIfTheFileCannotBeMade()
{
    openDialog();
    fill("none/a", dir->filePath("new"));
    ModalDriver driver;
    driver.expectNotice(QMessageBox::Critical, "Error",
                        "Can not create file "
                            + QDir::toNativeSeparators(dir->filePath("new/none/a.molk"))
                            + "\nNo such file or directory");

    pressOk();

    QVERIFY(QDir(dir->filePath("new")).exists());
    QVERIFY(dialog->result() != QDialog::Accepted);
}

void tst_NewFileCreation::messageIsReplacedByTheNext()
{
    openDialog();
    fill("");
    pressOk();
    QCOMPARE(info(), QString("Please enter a name."));
    fill("a", "");
    pressOk();
    QCOMPARE(info(), QString("Please enter a path."));
    fill("a", dir->path());

    pressOk();

    // Nothing clears it on success: the dialog goes.
    QCOMPARE(info(), QString("Please enter a path."));
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void tst_NewFileCreation::longMessageNeedsNoWideDialog()
{
    openDialog();
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    const int width = dialog->width();
    QFile file(dir->filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    fill("a", dir->filePath("file" + QString("/directory").repeated(30)));

    pressOk();

    QVERIFY(info().startsWith("Cannot make the path "));
    QCoreApplication::processEvents();
    QCOMPARE(dialog->width(), width);
    const auto *label = child<QLabel>("labelInfo");
    QVERIFY(label->height() >= label->heightForWidth(label->width()));
    QVERIFY(label->heightForWidth(label->width()) > 2 * label->fontMetrics().height());

    fill("", "/tmp");
    pressOk();
    QVERIFY(label->fontMetrics().horizontalAdvance(info()) < label->width());
}

void tst_NewFileCreation::blanksAndEndingsInTheName_data()
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

void tst_NewFileCreation::blanksAndEndingsInTheName()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    QVERIFY(QDir(dir->path()).mkdir("sub"));
    openDialog();
    fill(name);

    pressOk();

    QVERIFY(QFile::exists(dir->filePath(file)));
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void tst_NewFileCreation::blanksInFrontOfTheDirectoryLookElsewhere()
{
    QTemporaryDir current;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(current.path()));
    openDialog();
    fill("a", "  " + dir->path());

    pressOk();

    QVERIFY(QDir::setCurrent(before));
    // With the blanks the path is a relative one, whose directory was made.
    QVERIFY(QDir(current.path() + "/  " + dir->path()).exists());
    QVERIFY(QFile::exists(dir->filePath("a.molk")));
}

void tst_NewFileCreation::dialogMayGoWhileItReportsAFailure()
{
    QVERIFY(QFile::link(dir->filePath("elsewhere"), dir->filePath("a.molk")));
    openDialog();
    fill("a");
    ModalDriver driver;
    driver.expectDialog<QMessageBox>([&](QMessageBox *) { delete dialog; });

    dialog->accept();

    QVERIFY(!dialog);
}

MOLK_TEST_MAIN(tst_NewFileCreation)
#include "tst_newfilecreation.moc"
