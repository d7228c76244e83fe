// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "extractiontest.h"
#include "testwidgetsmain.h"
#include "windowwatch.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <functional>

/// What the user sees of a reading, and how it ends early.
class tst_ExtractionDialog : public QObject
{
    Q_OBJECT

private slots:
    void cancelEndsTheReading();
    void cancelOfTheSecondCallLeavesAnEmptyNetlist();
    void destroyedDuringTheCall();
    void quickReadingShowsNoDialog();
    void dialogTellsWhatIsDone();
};

/// Calls \a act as soon as the extraction's dialog is shown.
class OnDialog : public WindowWatch
{
public:
    explicit OnDialog(std::function<void(QProgressDialog *)> action)
        : act(std::move(action))
    {
    }

    mutable int shown = 0;

protected:
    bool asks(const QWidget *window) const override
    {
        // It counts even if it goes before its loop turns.
        const bool isDialog = qobject_cast<const QProgressDialog *>(window);
        shown += isDialog ? 1 : 0;
        return isDialog;
    }

    void meet(QWidget *window) override { act(qobject_cast<QProgressDialog *>(window)); }

private:
    std::function<void(QProgressDialog *)> act;
};

static void pressCancel(QProgressDialog *dialog)
{
    auto *button = dialog->findChild<QPushButton *>();
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
}

void tst_ExtractionDialog::cancelEndsTheReading()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool(slowTool));
    test.add(test.write("a.v", oneTop));
    OnDialog onDialog(pressCancel);
    QCOMPARE(test.modules("top").messages, QStringList("ERROR: cancelled"));
    QCOMPARE(onDialog.shown, 1);
    QCOMPARE(test.netlist()->top->name(), QString("top"));
}

void tst_ExtractionDialog::cancelOfTheSecondCallLeavesAnEmptyNetlist()
{
    ExtractionTest test;
    test.add(test.write("a.v", oneTop));
    QCOMPARE(test.modules().errors(), QStringList());
    {
        OnDialog onDialog(pressCancel);
        QStringList log;
        const auto netlist = test.netlist(&log);
        QCOMPARE(onDialog.shown, 1);
        QCOMPARE(log, QStringList("ERROR: cancelled"));
        QCOMPARE(netlist->top->name(), QString("top"));
        QVERIFY(netlist->top->children().isEmpty());
    }
    QCOMPARE(test.netlist()->top->children().size(), 1);
}

void tst_ExtractionDialog::destroyedDuringTheCall()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool(slowTool));
    test.add(test.write("a.v", oneTop));
    QTimer::singleShot(50, this, [&] { test.extraction.reset(); });
    QCOMPARE(test.modules().messages, QStringList("ERROR: cancelled"));
}

void tst_ExtractionDialog::quickReadingShowsNoDialog()
{
    Standin::ExtractionOptions options;
    QCOMPARE(options.dialogDelay, 500);
    // To the slowest machine a reading is quick that ends within an hour.
    options.dialogDelay = 60 * 60 * 1000;
    ExtractionTest test(options);
    test.add(test.write("a.v", oneTop));
    OnDialog onDialog([](QProgressDialog *) {});
    test.modules();
    test.modules();
    QCOMPARE(onDialog.shown, 0);
}

void tst_ExtractionDialog::dialogTellsWhatIsDone()
{
    ExtractionTest writer;
    ExtractionTest test(writer.optionsWithTool(slowTool));
    test.add(test.write("a.v", oneTop));
    test.add(test.write("b.v", "\n"));
    QString title;
    QString text;
    OnDialog onDialog([&](QProgressDialog *dialog) {
        title = dialog->windowTitle();
        text = dialog->labelText();
        QVERIFY(dialog->isModal());
        pressCancel(dialog);
    });
    test.modules();
    QCOMPARE(title, QString("Reading the Design"));
    QVERIFY2(text.startsWith("Preprocessing the sources...\n2 files, "), qPrintable(text));
}

MOLK_TEST_MAIN(tst_ExtractionDialog)
#include "tst_extractiondialog.moc"
