// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "molkfilewizardfactory.h"
#include "newfiledialog.h"
#include "testwidgetsmain.h"

#include "host/host.h"

#include <QLineEdit>
#include <QPointer>

using namespace MOLK;

class tst_MolkFileWizardFactory : public QObject
{
    Q_OBJECT

private slots:
    void introducesItself();
    void keepsTheHostsIcon();
    void runsTheDialogOnce();
    void parentMayGoWhileTheDialogIsOpen();
};

void tst_MolkFileWizardFactory::introducesItself()
{
    const MolkFileWizardFactory factory;

    QCOMPARE(factory.id(), QString("MB.Wizard.MOLK"));
    QCOMPARE(factory.name(), QString("MOLK Config File"));
    QCOMPARE(factory.description(), QString("Create a MOLK Config File."));
    QVERIFY(factory.parent() == nullptr);
}

void tst_MolkFileWizardFactory::keepsTheHostsIcon()
{
    const MolkFileWizardFactory factory;

    QCOMPARE(factory.icon().isNull(), factory.Core::IWizardFactory::icon().isNull());
    QCOMPARE(factory.icon().pixmap(16).toImage(),
             factory.Core::IWizardFactory::icon().pixmap(16).toImage());
}

void tst_MolkFileWizardFactory::runsTheDialogOnce()
{
    Standin::Host host;
    MolkFileWizardFactory factory;
    QWidget parent;
    QPointer<QDialog> dialog;
    ModalDriver driver;
    driver.expectDialog<NewFileDialog>([&](NewFileDialog *shown) {
        QCOMPARE(shown->parentWidget(), &parent);
        QCOMPARE(shown->findChild<QLineEdit *>("editCreateIn")->text(), QString("/some/dir"));
        dialog = shown;
        shown->reject();
    });

    factory.runWizard(&parent, "/some/dir");

    QVERIFY(!dialog);
}

void tst_MolkFileWizardFactory::parentMayGoWhileTheDialogIsOpen()
{
    Standin::Host host;
    MolkFileWizardFactory factory;
    QPointer<QWidget> parent = new QWidget;
    ModalDriver driver;
    driver.expectDialog<NewFileDialog>([&](NewFileDialog *) { delete parent; });

    factory.runWizard(parent, "/some/dir");

    QVERIFY(!parent);
}

MOLK_TEST_MAIN(tst_MolkFileWizardFactory)
#include "tst_molkfilewizardfactory.moc"
