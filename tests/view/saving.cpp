// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "saving.h"

#include "modaldriver.h"

#include <QDir>
#include <QPushButton>
#include <QTest>

QString closeQuestion(const QString &file)
{
    return "Save changes to \"" + QDir::toNativeSeparators(file) + "\" ?";
}

void expectFaults(ModalDriver &driver, const QWidget *view, const QString &report)
{
    driver.expectDialog<QMessageBox>([view, report](QMessageBox *box) {
        QCOMPARE(box->parentWidget(), view);
        QCOMPARE(box->windowTitle(), QString("Error"));
        QCOMPARE(box->text(), QString("Your settings contain some errors.             "));
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->detailedText(), report);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        QCOMPARE(box->defaultButton(), qobject_cast<QPushButton *>(box->button(QMessageBox::Ok)));
        QCOMPARE(box->escapeButton(), box->button(QMessageBox::Ok));
        QTest::keyClick(box, Qt::Key_Escape);
    });
}

void expectFailedWrite(ModalDriver &driver, const QString &file)
{
    driver.expectNotice(QMessageBox::Critical, "Error",
                        "Can not save to " + QDir::toNativeSeparators(file));
}

// The longest name that a file may have leaves no room for the one that is written in its place, so
// that every write fails while the file stays where it is.
QString unwritableName()
{
    return QString(250, 'a') + ".molk";
}
