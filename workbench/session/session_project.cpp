// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// What the session does to the project and to the files behind the open configuration.

#include "session.h"

#include "hands.h"
#include "pagestate.h"
#include "runtime.h"

#include "host/documentarea.h"
#include "molkcore.h"
#include "molkfile.h"

#include "core/iview.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace Workbench {

// Without a clock the save is refused, and the file stays away.
void Session::refuseSave()
{
    Hands::click(stage.find<QCheckBox>(view(), "checkUserClock"), QPoint(8, 8));
    stage.dialogs.expect("QMessageBox", [this](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        stage.same("report", box->detailedText(), "Molk 0: No synchronization clock specified");
        const auto buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (box->buttonRole(button) == QMessageBox::ActionRole)
                Hands::click(button);
        }
        stage.takePicture(box, "refused");
        Hands::click(box->button(QMessageBox::Ok));
    });
    Hands::key(Qt::Key_S, Qt::ControlModifier);
    stage.same("tab", tabText(), "session.molk *");
}

void Session::showSettings()
{
    stage.dialogs.expect("projectSettings", [this](QWidget *dialog) {
        stage.same("top module", stage.find<QComboBox>(dialog, "topModule")->currentText(),
                   "beacon_soc");
        stage.takePicture(dialog, "settings");
        Hands::key(Qt::Key_Escape);
    });
    Hands::key(Qt::Key_T, Qt::ControlModifier);

    Hands::clickRow(stage.find<QTreeWidget>(stage.window, "projectPanel"),
                    projectRow("rtl/fifo.v"));
    Hands::key(Qt::Key_P, Qt::AltModifier);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    stage.check("the menu of the project opens", menu != nullptr);
    if (!menu)
        return;
    stage.takePicture(menu, "project-menu");
    QTest::keyClick(menu, Qt::Key_Escape);
}

static void append(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write(text);
}

QList<QWidget *> Session::questions() const
{
    QList<QWidget *> shown;
    const auto all = view()->findChildren<QWidget *>("MOLK__ReloadBanner");
    for (QWidget *banner : all) {
        if (banner->isVisible())
            shown.append(banner);
    }
    return shown;
}

// Both the design and the configuration change outside, and both are read again.
void Session::changeOutside()
{
    const QStringList before = pageState(view());
    append(pathOf("rtl/fifo.v"), "// A change.\n");
    append(pathOf("session.molk"), "\n");
    stage.check("two questions come", QTest::qWaitFor([this] { return questions().size() == 2; }));
    stage.takePicture(stage.window, "questions");

    for (int left = questions().size(); left > 0 && !stage.failed(); --left) {
        Hands::click(stage.find<QPushButton>(questions().constFirst(), "btnA"));
        stage.check("a question goes", questions().size() == left - 1);
    }
    stage.same("page", pageState(view()), before);
}

// Modules without a hit are left out, and the rows are those of the design's levels.
void Session::searchHierarchy()
{
    editPort("treeProbeOut", 1, [this](QWidget *dialog) {
        searchNets(stage.find(dialog, "btnAdd"), [this](QWidget *search) {
            Hands::click(stage.find<QCheckBox>(search, "checkBoxAdvancedFilter"), QPoint(8, 8));
            Hands::click(stage.find<QCheckBox>(search, "checkBoxIncludeSubentries"), QPoint(8, 8));
            Hands::click(stage.find<QCheckBox>(search, "checkBoxHierarchyView"), QPoint(8, 8));
            lookFor(search, "radioButtonNormal", "u_uart/");
            stage.same("levels found", stage.topRows(search, "treeWidget"), {"beacon_soc"});
            stage.find<QTreeWidget>(search, "treeWidget")->expandAll();
            stage.takePicture(search, "search-hierarchy");
            cancel(search);
        });
        cancel(dialog);
    });
}

static MOLK::SignalItem item(const QString &name, bool selectable, bool found, const QString &alias)
{
    MOLK::SignalItem made;
    made.name = name;
    made.alias = alias;
    made.selectable = selectable;
    made.found = found;
    made.kind = 0;
    return made;
}

// A configuration that something else than the editor has written.
void Session::showMarks()
{
    MOLK::MolkCore core(0);
    core.getProbeIn(0)->setSignalNet(
        {item("beacon_soc/clk", true, true, QString()),
         item("beacon_soc/rst_n", false, true, QString()),
         item("beacon_soc/u_old/state", true, false, QString()),
         item("beacon_soc/u_io/u_uart/tx_full", true, true, "transmitter full")});
    stage.check("a configuration with marks",
                MOLK::writeMOLKConfigToXml({&core}, pathOf("marks.molk")));
    stage.dialogs.expect("QFileDialog",
                         [this](QWidget *dialog) { chooseFile(dialog, pathOf("marks.molk")); });
    Hands::key(Qt::Key_O, Qt::ControlModifier);
    stage.same("tab", tabText(), "marks.molk");

    auto *tree = stage.find<QTreeWidget>(view(), "treeProbeIn");
    tree->expandAll();
    stage.same(
        "rows", signalRows("treeProbeIn", 0),
        {"beacon_soc/clk", "beacon_soc/rst_n", "beacon_soc/u_old/state", "transmitter full"});
    stage.takePicture(stage.find<QWidget>(view(), "groupBox"), "marks");
    Hands::key(Qt::Key_W, Qt::ControlModifier);
}

} // namespace Workbench
