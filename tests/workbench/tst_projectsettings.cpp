// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "modaldriver.h"
#include "projectpanel.h"
#include "projectsettingsdialog.h"
#include "testwidgetsmain.h"
#include "treelines.h"
#include "workbenchfixture.h"

#include "core/iview.h"
#include "host/host.h"
#include "project/edamproject.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>

using Workbench::ProjectSettingsDialog;

static const char designChanged[] = "Design files changed. Do you want to reload?";
static const char topChanged[] = "Top module changed. Do you want to reload?";

/// What a user does to the settings of a project, and how an open configuration answers.
class ProjectSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { bench.reset(); }

    void theTopModuleAsks();
    void theTopModuleIsUnset();
    void modulesOfTheDesignAreOffered();
    void aDesignWithoutModulesIsTold();
    void whatAnOptionDoes_data();
    void whatAnOptionDoes();
    void aDeviceLeavesConfigurationsAlone();
    void theOtherSynthesisToolKeepsFromSaving();
    void aStandardOfItsOwnNameIsKept();
    void directoriesAreChosenAndOrdered();
    void cancelChangesNothing();
    void severalChangesAreOneWrite();
    void aProjectFileThatCannotBeWrittenIsTold();
    void eachOptionLeadsToItsField_data();
    void eachOptionLeadsToItsField();
    void theKeyboardAloneSetsEverything();
    void theTabKeyGoesFromTopToBottom();

private:
    using Act = std::function<void(ProjectSettingsDialog *)>;

    void expectSettings(ModalDriver &driver, const Act &act);
    void edit(const Act &act);
    QStringList rows() { return treeLines(bench.panel()->model()); }

    WorkbenchFixture bench;
};

void ProjectSettingsTest::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(bench.start());
}

void ProjectSettingsTest::init()
{
    QVERIFY(bench.openChip());
}

static void accept(QDialog *dialog)
{
    auto *buttons = dialog->findChild<QDialogButtonBox *>();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

template<typename Widget>
static Widget *field(QDialog *dialog, const char *name)
{
    auto *found = dialog->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("there is no field %s", name);
    return found;
}

static void typeTop(QDialog *dialog, const QString &text)
{
    QLineEdit *line = field<QComboBox>(dialog, "topModule")->lineEdit();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

void ProjectSettingsTest::expectSettings(ModalDriver &driver, const Act &act)
{
    driver.expectDialog<ProjectSettingsDialog>([act](ProjectSettingsDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), "Settings of chip");
        dialog->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), dialog);
        act(dialog);
        if (dialog->isVisible())
            accept(dialog);
    });
}

void ProjectSettingsTest::edit(const Act &act)
{
    ModalDriver driver;
    expectSettings(driver, act);
    bench.menu("PS");
}

void ProjectSettingsTest::theTopModuleAsks()
{
    ModalDriver driver;
    expectSettings(driver, [](QDialog *dialog) {
        QVERIFY(field<QComboBox>(dialog, "topModule")->hasFocus());
        typeTop(dialog, "chip");
    });
    bench.key(Qt::Key_T, Qt::ControlModifier);

    QCOMPARE(bench.banners(), QStringList(topChanged));
    QVERIFY(bench.projectText().endsWith("toplevel: chip\n"));
    QTRY_VERIFY(rows().contains("    Top module: chip"));

    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    bench.answerBanner("btnA");
    QCOMPARE(bench.runtime.services().callsOf({"catchRtlModules"}),
             QStringList("catchRtlModules top=chip"));
    bench.runtime.services().setRecording(false);
    QCOMPARE(bench.banners(), QStringList());
}

void ProjectSettingsTest::theTopModuleIsUnset()
{
    QString error;
    QVERIFY(bench.runtime.services().project()->setTop("chip", &error));
    bench.answerBanner("btnB");

    edit([](QDialog *dialog) { typeTop(dialog, QString()); });
    QCOMPARE(bench.banners(), QStringList(topChanged));
    QVERIFY(!bench.projectText().contains("toplevel"));
}

// They are offered and one is taken by the keys; the text that was typed stays until then.
void ProjectSettingsTest::modulesOfTheDesignAreOffered()
{
    bench.runtime.services().extraction().queueModules({{"board", "chip"}, {"chip", "part"}, {}});
    edit([](QDialog *dialog) {
        auto *box = field<QComboBox>(dialog, "topModule");
        typeTop(dialog, "pa");
        QTest::mouseClick(field<QPushButton>(dialog, "findModules"), Qt::LeftButton);
        QStringList offered;
        for (int i = 0; i < box->count(); ++i)
            offered.append(box->itemText(i));
        QCOMPARE(offered, QStringList({"board", "chip", "part"}));
        QCOMPARE(box->currentText(), "pa");

        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup);
        auto *list = popup->findChild<QAbstractItemView *>();
        list->setCurrentIndex(list->model()->index(2, 0));
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(box->currentText(), "part");
    });
    QVERIFY(bench.projectText().endsWith("toplevel: part\n"));
}

void ProjectSettingsTest::aDesignWithoutModulesIsTold()
{
    bench.runtime.services().extraction().queueModules({{}, {}, {"ERROR: chip.v:1:1: odd"}});
    ModalDriver driver;
    expectSettings(driver, [](QDialog *dialog) {
        QTest::mouseClick(field<QPushButton>(dialog, "findModules"), Qt::LeftButton);
    });
    driver.expectMessage("Error", "No module was found. The messages of the window tell why.",
                         QMessageBox::Ok);
    bench.menu("PS");
    QCOMPARE(bench.banners(), QStringList());
}

void ProjectSettingsTest::whatAnOptionDoes_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QStringList>("asked");

    QTest::newRow("include-path") << "IncludePath" << QByteArray("IncludePath:\n      - rtl/inc\n")
                                  << "Include path: rtl/inc" << QStringList(designChanged);
    QTest::newRow("standard") << "Verilog_Standard"
                              << QByteArray("Verilog_Standard: \"1364-2005\"\n")
                              << "Verilog standard: 1364-2005" << QStringList(designChanged);
    QTest::newRow("tool") << "Synthesize_tool" << QByteArray("Synthesize_tool: Synplify\n")
                          << "Synthesis tool: Synplify" << QStringList();
    QTest::newRow("device") << "Device" << QByteArray("Device: OD-7\n") << "Device: OD-7"
                            << QStringList();
}

static void setOption(QDialog *dialog, const QString &option)
{
    if (option == "IncludePath") {
        auto *paths = field<QListWidget>(dialog, "paths");
        ModalDriver driver;
        driver.expectDialog<QFileDialog>([](QFileDialog *chooser) {
            QCOMPARE(chooser->windowTitle(), "Add Include Directory");
            QVERIFY(QDir(chooser->directory()).mkpath("rtl/inc"));
            chooser->findChild<QLineEdit *>("fileNameEdit")
                ->setText(chooser->directory().filePath("rtl/inc"));
            QMetaObject::invokeMethod(chooser, "accept");
        });
        paths->setFocus();
        QTest::keyClick(paths, Qt::Key_Insert);
    } else if (option == "Verilog_Standard") {
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(field<QComboBox>(dialog, "verilogStandard"), Qt::Key_Down);
    } else if (option == "Synthesize_tool") {
        QTest::keyClicks(field<QComboBox>(dialog, "synthesisTool"), "Synplify");
    } else {
        QTest::keyClicks(field<QLineEdit>(dialog, "device"), "OD-7");
    }
}

// The dialog is driven by another driver, since it opens a dialog of its own.
void ProjectSettingsTest::whatAnOptionDoes()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, stored);
    QFETCH(QString, row);
    QFETCH(QStringList, asked);

    edit([option](QDialog *dialog) { setOption(dialog, option); });

    QCOMPARE(bench.banners(), asked);
    QVERIFY2(bench.projectText().contains(stored), bench.projectText());
    QTRY_VERIFY(rows().contains("    " + row));
}

void ProjectSettingsTest::aDeviceLeavesConfigurationsAlone()
{
    bench.runtime.services().setRecording(true);
    bench.runtime.services().clearCalls();
    edit([](QDialog *dialog) { setOption(dialog, "Device"); });
    QCOMPARE(bench.runtime.services().callsOf({"send"}), QStringList("send TE.Device.Change"));
    bench.runtime.services().setRecording(false);
    QCOMPARE(bench.banners(), QStringList());
    QCOMPARE(bench.documents()->activeView()->windowTitle(), "a.molk");
}

void ProjectSettingsTest::theOtherSynthesisToolKeepsFromSaving()
{
    edit([](QDialog *dialog) { setOption(dialog, "Synthesize_tool"); });
    bench.modify();
    ModalDriver driver;
    driver.expectMessage("Error",
                         "For RTL Design, MOLK is only available for OndrelSynthesis. Please "
                         "change Synthesis Tool to OndrelSynthesis in Configurations.",
                         QMessageBox::Ok);
    bench.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(bench.documents()->activeView()->windowTitle(), "a.molk *");

    expectSettings(driver, [](QDialog *dialog) {
        auto *box = field<QComboBox>(dialog, "synthesisTool");
        QCOMPARE(box->currentText(), "Synplify");
        box->lineEdit()->selectAll();
        QTest::keyClicks(box, "OndrelSynthesis");
    });
    bench.menu("PS");
    bench.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(bench.documents()->activeView()->windowTitle(), "a.molk");
}

void ProjectSettingsTest::aStandardOfItsOwnNameIsKept()
{
    QString error;
    QVERIFY(
        bench.runtime.services().project()->setOption("Verilog_Standard", "Verilog 2001", &error));
    const QByteArray before = bench.projectText();
    edit([](QDialog *dialog) {
        auto *box = field<QComboBox>(dialog, "verilogStandard");
        QCOMPARE(box->currentText(), "Verilog 2001");
        QCOMPARE(box->count(), 9);
        QCOMPARE(box->itemText(0), "not set");
        QCOMPARE(box->itemText(6), "SystemVerilog 2012 (1800-2012)");
    });
    QCOMPARE(bench.projectText(), before);
}

void ProjectSettingsTest::directoriesAreChosenAndOrdered()
{
    QString error;
    QVERIFY(bench.runtime.services().project()->setOption("IncludePath",
                                                          QStringList({"a", "b", "c"}), &error));
    edit([](QDialog *dialog) {
        auto *paths = field<QListWidget>(dialog, "paths");
        paths->setFocus();
        QTest::keyClick(paths, Qt::Key_Up, Qt::AltModifier); // It is the first already.
        QTest::keyClick(paths, Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(paths->item(1)->text(), "a");
        QCOMPARE(paths->currentRow(), 1);
        QTest::keyClick(paths, Qt::Key_Down);
        QTest::keyClick(paths, Qt::Key_Delete);
        QTest::keyClick(paths, Qt::Key_Up);
        QTest::keyClick(paths, Qt::Key_F2);
        auto *editor = paths->findChild<QLineEdit *>();
        QVERIFY(editor);
        QTest::keyClicks(editor, "other");
        QTest::keyClick(editor, Qt::Key_Return);
    });
    QVERIFY2(bench.projectText().contains("IncludePath:\n      - other\n      - a\n"),
             bench.projectText());
}

void ProjectSettingsTest::cancelChangesNothing()
{
    const QByteArray before = bench.projectText();
    edit([](QDialog *dialog) {
        typeTop(dialog, "chip");
        setOption(dialog, "Device");
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
    });
    QCOMPARE(bench.projectText(), before);
    QCOMPARE(bench.banners(), QStringList());
}

// The first of the events that the configuration cares for decides on the words.
void ProjectSettingsTest::severalChangesAreOneWrite()
{
    edit([](QDialog *dialog) {
        typeTop(dialog, "chip");
        setOption(dialog, "Verilog_Standard");
        setOption(dialog, "Device");
    });
    QCOMPARE(bench.banners(), QStringList(topChanged));
    const QByteArray text = bench.projectText();
    QVERIFY(text.contains("toplevel: chip") && text.contains("1364-2005") && text.contains("OD-7"));
}

void ProjectSettingsTest::aProjectFileThatCannotBeWrittenIsTold()
{
    const QByteArray theirs = bench.projectText() + "toplevel: theirs\n";
    bench.makeFile("chip.eda.yml", theirs);
    ModalDriver driver;
    expectSettings(driver, [](QDialog *dialog) { typeTop(dialog, "chip"); });
    driver.expectMessage("Error",
                         "The project file " + bench.path("chip.eda.yml")
                             + " has been changed by another program. Open it again first.",
                         QMessageBox::Ok);
    bench.menu("PT");
    QCOMPARE(bench.projectText(), theirs);
    QCOMPARE(bench.banners(), QStringList());
    QVERIFY(rows().contains("    Top module: not set"));
}

void ProjectSettingsTest::eachOptionLeadsToItsField_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("field");
    QTest::newRow("top") << "Top module: not set"
                         << "topModule";
    QTest::newRow("device") << "Device: not set"
                            << "device";
    QTest::newRow("standard") << "Verilog standard: not set"
                              << "verilogStandard";
    QTest::newRow("tool") << "Synthesis tool: not set"
                          << "synthesisTool";
    QTest::newRow("include-path") << "Include path: not set"
                                  << "paths";
}

void ProjectSettingsTest::eachOptionLeadsToItsField()
{
    QFETCH(QString, row);
    QFETCH(QString, field);
    for (Qt::Key key : {Qt::Key_F2, Qt::Key_Return}) {
        ModalDriver driver;
        expectSettings(driver, [field](QDialog *dialog) {
            const QWidget *focus = dialog->focusWidget();
            QVERIFY(focus);
            QCOMPARE(focus->objectName(), field);
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        bench.clickRow(row);
        bench.key(key);
    }
}

// Marked letters lead to each field, and Return is OK.
void ProjectSettingsTest::theKeyboardAloneSetsEverything()
{
    edit([](QDialog *dialog) {
        QWindow *window = dialog->windowHandle();
        const auto go = [window, dialog](Qt::Key letter, const char *name) {
            QTest::keyClick(window, letter, Qt::AltModifier);
            QCOMPARE(dialog->focusWidget()->objectName(), QLatin1String(name));
        };
        go(Qt::Key_V, "device");
        QTest::keyClicks(dialog->focusWidget(), "OD-7");
        go(Qt::Key_E, "verilogStandard");
        QTest::keyClick(window, Qt::Key_Down);
        go(Qt::Key_S, "synthesisTool");
        go(Qt::Key_I, "paths");
        go(Qt::Key_T, "topModule");
        QTest::keyClicks(dialog->focusWidget(), "chip");
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(!dialog->isVisible());
    });
    const QByteArray text = bench.projectText();
    QVERIFY2(text.contains("toplevel: chip") && text.contains("1364-1995") && text.contains("OD-7"),
             text);
}

void ProjectSettingsTest::theTabKeyGoesFromTopToBottom()
{
    QString error;
    QVERIFY(bench.runtime.services().project()->setOption("IncludePath", QStringList({"a", "b"}),
                                                          &error));
    edit([](QDialog *dialog) {
        QStringList visited;
        for (int i = 0; i < 10; ++i) {
            QWidget *focus = dialog->focusWidget();
            const auto *button = qobject_cast<QPushButton *>(focus);
            visited.append(button ? button->text().remove('&') : focus->objectName());
            QTest::keyClick(dialog->windowHandle(), Qt::Key_Tab);
        }
        QCOMPARE(visited,
                 QStringList({"topModule", "Find", "device", "verilogStandard", "synthesisTool",
                              "paths", "Add...", "Remove", "Down", "OK"}));
    });
}

MOLK_TEST_MAIN(ProjectSettingsTest)
#include "tst_projectsettings.moc"
