// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "newfiletest.h"
#include "testwidgetsmain.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace MOLK;

class tst_NewFileDialog : public NewFileTest
{
    Q_OBJECT

private slots:
    void formHasItsProperties();
    void directoryIsTheGivenOneOrHome();
    void checkBoxFollowsTheProject();
    void projectIsAskedTwice();
    void markupInAMessageIsShownAsItIs();

    void browseTakesTheChosenDirectory();
    void cancelledBrowseKeepsTheDirectory();
    void dialogMayGoWhileItBrowses();
};

void tst_NewFileDialog::formHasItsProperties()
{
    openDialog("/tmp");

    QCOMPARE(dialog->objectName(), QString("MOLK__NewFileDialog"));
    QCOMPARE(dialog->size(), QSize(712, 138));
    QCOMPARE(dialog->windowTitle(), QString("New MOLK Config File"));
    QCOMPARE(child<QWidget>("widget")->minimumSize(), QSize(500, 0));
    const auto *grid = qobject_cast<QGridLayout *>(child<QWidget>("widget")->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->verticalSpacing(), 10);
    QCOMPARE(grid->contentsMargins().left(), 0);
    QCOMPARE(grid->contentsMargins().right(), 0);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), child<QLabel>("labelName"));
    QCOMPARE(grid->itemAtPosition(0, 1)->widget(), child<QLineEdit>("editName"));
    QCOMPARE(grid->itemAtPosition(0, 2)->widget(), child<QLabel>("label"));
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), child<QLabel>("labelCreateIn"));
    QCOMPARE(grid->itemAtPosition(1, 1)->widget(), child<QLineEdit>("editCreateIn"));
    QCOMPARE(grid->itemAtPosition(1, 2)->widget(), child<QPushButton>("btnBrowse"));
    QCOMPARE(grid->itemAtPosition(2, 1)->widget(), child<QCheckBox>("checkBoxAddToCurrent"));
    QCOMPARE(grid->itemAtPosition(2, 2)->widget(), child<QCheckBox>("checkBoxAddToCurrent"));

    QCOMPARE(child<QLabel>("labelName")->text(), QString("Name:"));
    QCOMPARE(child<QLineEdit>("editName")->text(), QString());
    QCOMPARE(child<QLineEdit>("editName")->placeholderText(), QString("Enter a name"));
    QCOMPARE(child<QLabel>("label")->text(), QString(".molk"));
    QCOMPARE(child<QLabel>("labelCreateIn")->text(), QString("Create in:"));
    QCOMPARE(child<QPushButton>("btnBrowse")->text(), QString("Browse..."));
    QCOMPARE(child<QCheckBox>("checkBoxAddToCurrent")->text(), QString("Add to current project"));
    QCOMPARE(info(), QString());
    QCOMPARE(child<QLabel>("labelInfo")->styleSheet(), QString("QLabel { color: red }"));
    const auto *buttons = child<QDialogButtonBox>("buttonBox");
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(dialog->layout()->objectName(), QString("verticalLayout"));
    QCOMPARE(dialog->layout()->count(), 2);
    QCOMPARE(dialog->layout()->itemAt(0)->widget(), child<QWidget>("widget"));
    QLayout *bottom = dialog->layout()->itemAt(1)->layout();
    QCOMPARE(bottom->objectName(), QString("horizontalLayout"));
    QCOMPARE(bottom->count(), 2);
    QCOMPARE(bottom->itemAt(0)->widget(), child<QLabel>("labelInfo"));
    QCOMPARE(bottom->itemAt(1)->widget(), child<QDialogButtonBox>("buttonBox"));
}

void tst_NewFileDialog::directoryIsTheGivenOneOrHome()
{
    openDialog("/some/dir");
    QCOMPARE(child<QLineEdit>("editCreateIn")->text(), QDir::toNativeSeparators("/some/dir"));

    openDialog(QString());
    QCOMPARE(child<QLineEdit>("editCreateIn")->text(), QDir::toNativeSeparators(QDir::homePath()));
}

void tst_NewFileDialog::checkBoxFollowsTheProject()
{
    openDialog();
    QVERIFY(!child<QCheckBox>("checkBoxAddToCurrent")->isEnabled());
    QVERIFY(!child<QCheckBox>("checkBoxAddToCurrent")->isChecked());

    openProject();
    openDialog();
    QVERIFY(child<QCheckBox>("checkBoxAddToCurrent")->isEnabled());
    QVERIFY(child<QCheckBox>("checkBoxAddToCurrent")->isChecked());
}

void tst_NewFileDialog::projectIsAskedTwice()
{
    openDialog();

    QCOMPARE(host->calls(), QStringList({"currentProject", "currentProject"}));
}

void tst_NewFileDialog::markupInAMessageIsShownAsItIs()
{
    openDialog("/tmp");

    QCOMPARE(child<QLabel>("labelInfo")->textFormat(), Qt::PlainText);
}

void tst_NewFileDialog::browseTakesTheChosenDirectory()
{
    QVERIFY(QDir(dir->path()).mkdir("sub"));
    openDialog();
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([&](QFileDialog *chooser) {
        QCOMPARE(chooser->parentWidget(), dialog.data());
        QCOMPARE(chooser->windowTitle(), QString("Select Directory"));
        QCOMPARE(chooser->directory(), QDir(dir->path()));
        QCOMPARE(chooser->fileMode(), QFileDialog::Directory);
        QVERIFY(chooser->testOption(QFileDialog::ShowDirsOnly));
        chooser->selectFile("sub");
        QMetaObject::invokeMethod(chooser, "accept");
    });

    child<QPushButton>("btnBrowse")->click();

    QCOMPARE(child<QLineEdit>("editCreateIn")->text(), dir->filePath("sub"));
}

void tst_NewFileDialog::cancelledBrowseKeepsTheDirectory()
{
    openDialog();
    ModalDriver driver;
    driver.expectDialog<QFileDialog>(
        [](QFileDialog *chooser) { QTest::keyClick(chooser, Qt::Key_Escape); });

    child<QPushButton>("btnBrowse")->click();

    QCOMPARE(child<QLineEdit>("editCreateIn")->text(), dir->path());
}

void tst_NewFileDialog::dialogMayGoWhileItBrowses()
{
    openDialog("/tmp");
    ModalDriver driver;
    driver.expectDialog<QFileDialog>([&](QFileDialog *) { delete dialog; });

    QMetaObject::invokeMethod(dialog, "onBrowse");

    QVERIFY(!dialog);
}

MOLK_TEST_MAIN(tst_NewFileDialog)
#include "tst_newfiledialog.moc"
