// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagedlg.h"
#include "modaldriver.h"
#include "testwidgetsmain.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>
#include <QVBoxLayout>

using namespace MOLK;

class tst_MessageDlg : public QObject
{
    Q_OBJECT

private slots:
    void formHasItsProperties();
    void linesAreShownAsTheyAre();
    void newLinesReplaceTheOldOnes();
    void okAccepts();
    void escapeRejects();
};

void tst_MessageDlg::formHasItsProperties()
{
    MessageDlg dialog(nullptr);

    QCOMPARE(dialog.objectName(), QString("MOLK__MessageDlg"));
    QCOMPARE(dialog.size(), QSize(400, 300));
    QCOMPARE(dialog.windowTitle(), QString("Dialog"));
    QCOMPARE(dialog.windowModality(), Qt::NonModal);
    QVERIFY(qobject_cast<QVBoxLayout *>(dialog.layout()));
    QCOMPARE(dialog.layout()->objectName(), QString("verticalLayout"));
    const auto *text = dialog.findChild<QTextEdit *>("textEdit");
    QVERIFY(text);
    QVERIFY(text->isReadOnly());
    QCOMPARE(text->lineWrapMode(), QTextEdit::NoWrap);
    const auto *buttons = dialog.findChild<QDialogButtonBox *>("buttonBox");
    QVERIFY(buttons);
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok);
}

void tst_MessageDlg::linesAreShownAsTheyAre()
{
    MessageDlg dialog(nullptr);

    dialog.setMessages({"INFO  two  blanks", "", "ERROR: <b>module</b> &amp;"});

    QCOMPARE(dialog.findChild<QTextEdit *>("textEdit")->toPlainText(),
             QString("INFO  two  blanks\n\nERROR: <b>module</b> &amp;"));
}

void tst_MessageDlg::newLinesReplaceTheOldOnes()
{
    MessageDlg dialog(nullptr);
    dialog.setMessages({"a", "b"});

    dialog.setMessages({"c"});

    QCOMPARE(dialog.findChild<QTextEdit *>("textEdit")->toPlainText(), QString("c"));
}

void tst_MessageDlg::okAccepts()
{
    MessageDlg dialog(nullptr);
    QSignalSpy accepted(&dialog, SIGNAL(accepted()));
    ModalDriver driver;
    driver.expectDialog<MessageDlg>([](MessageDlg *shown) {
        QCOMPARE(shown->windowModality(), Qt::ApplicationModal);
        QTest::mouseClick(
            shown->findChild<QDialogButtonBox *>("buttonBox")->button(QDialogButtonBox::Ok),
            Qt::LeftButton);
    });

    QCOMPARE(dialog.exec(), int(QDialog::Accepted));

    // The button and the box that holds it are both connected.
    QCOMPARE(accepted.count(), 2);
    QCOMPARE(dialog.windowModality(), Qt::NonModal);
}

void tst_MessageDlg::escapeRejects()
{
    MessageDlg dialog(nullptr);
    ModalDriver driver;
    driver.expectDialog<MessageDlg>(
        [](MessageDlg *shown) { QTest::keyClick(shown, Qt::Key_Escape); });

    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
}

MOLK_TEST_MAIN(tst_MessageDlg)
#include "tst_messagedlg.moc"
