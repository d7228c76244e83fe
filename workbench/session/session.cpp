// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "session.h"

#include "hands.h"
#include "pagestate.h"
#include "runtime.h"
#include "treelines.h"

#include "host/documentarea.h"

#include "core/iview.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QTreeWidget>

namespace Workbench {

static const char normal[] = "radioButtonNormal";
static const char wildcard[] = "radioButtonWildcard";
static const char expression[] = "radioButtonRegularExpression";

Session::Session(Runtime *application, const QString &folder)
    : stage(application, folder)
{
}

bool Session::play()
{
    stage.run("copy the example project", [this] { copyExample(); });
    stage.run("open the project", [this] { openProject(); });
    stage.run("make a configuration with the wizard", [this] { makeFile(); });
    stage.run("add and remove ports", [this] { addPorts(); });
    stage.run("search in mode Normal, pick buses and single nets", [this] { pickBuses(); });
    stage.run("search in mode Wildcard, pick bits of a bus", [this] { pickByWildcard(); });
    stage.run("search in mode Regular Expression, pick nets to drive",
              [this] { pickByExpression(); });
    stage.run("change the order of signals", [this] { changeOrder(); });
    stage.run("set an initial value", [this] { setValue(); });
    stage.run("save without a clock", [this] { refuseSave(); });
    stage.run("pick the user clock", [this] { pickUserClock(); });
    stage.run("save", [this] { save(); });
    stage.run("close, open again and compare", [this] { closeAndOpenAgain(); });
    stage.run("look at the settings of the project", [this] { showSettings(); });
    stage.run("change design and configuration outside", [this] { changeOutside(); });
    stage.run("search by levels of the design", [this] { searchHierarchy(); });
    stage.run("open a configuration with marked signals", [this] { showMarks(); });
    return !stage.failed();
}

QString Session::pathOf(const QString &name) const
{
    return stage.directory.absoluteFilePath("project/" + name);
}

Core::IView *Session::view() const
{
    return stage.runtime->services().documentArea()->activeView();
}

QString Session::tabText() const
{
    return stage.runtime->services().documentArea()->tabText(view());
}

void Session::copyExample()
{
    const QDir source(MOLK_EXAMPLES_DIR "/soc");
    QDir(pathOf(QString())).removeRecursively();
    for (QDirIterator it(source.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString from = it.next();
        const QString to = pathOf(source.relativeFilePath(from));
        stage.directory.mkpath(QFileInfo(to).path());
        stage.check("a copy of " + from, QFile::copy(from, to));
    }
}

void Session::openProject()
{
    stage.dialogs.expect("QFileDialog",
                         [this](QWidget *dialog) { chooseFile(dialog, pathOf("soc.eda.yml")); });
    Hands::key(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    stage.same("window title", stage.window->windowTitle(), "beacon_soc - Workbench");
    stage.takePicture(stage.window, "project");
}

void Session::makeFile()
{
    stage.dialogs.expect("MOLK__NewFileDialog", [this](QWidget *dialog) {
        Hands::click(stage.find<QLineEdit>(dialog, "editName"));
        Hands::type("session");
        stage.takePicture(dialog, "new-file");
        accept(dialog);
    });
    Hands::key(Qt::Key_N, Qt::ControlModifier);

    // A file without cores gets its first core when it is opened, and is modified by that.
    stage.same("tab", tabText(), "session.molk *");
    stage.same("cores", stage.rows(view(), "treeWidget"), {"molk_0"});
}

void Session::addPorts()
{
    Hands::click(stage.find<QPushButton>(view(), "btnProbeInAdd"));
    Hands::click(stage.find<QPushButton>(view(), "btnProbeInAdd"));
    Hands::click(stage.find<QPushButton>(view(), "btnProbeOutAdd"));

    // One too many goes again.
    auto *tree = stage.find<QTreeWidget>(view(), "treeProbeIn");
    Hands::clickRow(tree, tree->topLevelItem(2));
    Hands::click(stage.find<QPushButton>(view(), "btnProbeInRemove"));
    stage.same("Probe Ins", stage.rows(view(), "treeProbeIn"), {"Probe In0", "Probe In1"});
    stage.same("Probe Outs", stage.rows(view(), "treeProbeOut"), {"Probe Out0", "Probe Out1"});
}

void Session::pickBuses()
{
    editPort("treeProbeIn", 0, [this](QWidget *dialog) {
        searchNets(stage.find(dialog, "btnAdd"), [this](QWidget *search) {
            lookFor(search, normal, "u_uart/tx_");
            stage.same("nets found", stage.topRows(search, "treeWidget"),
                       {"beacon_soc/u_io/u_uart/tx_byte[7:0]",
                        "beacon_soc/u_io/u_uart/tx_level[4:0]", "beacon_soc/u_io/u_uart/tx_ready",
                        "beacon_soc/u_io/u_uart/tx_empty", "beacon_soc/u_io/u_uart/tx_full"});
            take(search,
                 {"beacon_soc/u_io/u_uart/tx_byte[7:0]", "beacon_soc/u_io/u_uart/tx_level[4:0]",
                  "beacon_soc/u_io/u_uart/tx_empty"});
            stage.takePicture(search, "search-normal");
            accept(search);
        });
        accept(dialog);
    });
    stage.same("signals of Probe In0", signalRows("treeProbeIn", 0),
               {"beacon_soc/u_io/u_uart/tx_byte[7:0]", "beacon_soc/u_io/u_uart/tx_level[4:0]",
                "beacon_soc/u_io/u_uart/tx_empty"});
}

void Session::pickByWildcard()
{
    editPort("treeProbeIn", 1, [this](QWidget *dialog) {
        searchNets(stage.find(dialog, "btnAdd"), [this](QWidget *search) {
            lookFor(search, wildcard, "*/g_pin?[0-1]?/sampled");
            stage.same("nets found", stage.topRows(search, "treeWidget"),
                       {"beacon_soc/u_io/u_gpio/g_pin[0]/sampled",
                        "beacon_soc/u_io/u_gpio/g_pin[1]/sampled"});
            Hands::click(stage.find(search, "btnAddAll"));

            lookFor(search, wildcard, "*/u_gpio/level*");
            take(search, {"beacon_soc/u_io/u_gpio/level[0]", "beacon_soc/u_io/u_gpio/level[3]"});
            stage.takePicture(search, "search-wildcard");
            accept(search);
        });
        accept(dialog);
    });

    // Bits of buses come ahead of single nets, whatever was picked first.
    stage.same("signals of Probe In1", signalRows("treeProbeIn", 1),
               {"beacon_soc/u_io/u_gpio/level[0]", "beacon_soc/u_io/u_gpio/level[3]",
                "beacon_soc/u_io/u_gpio/g_pin[0]/sampled",
                "beacon_soc/u_io/u_gpio/g_pin[1]/sampled"});
}

void Session::pickByExpression()
{
    editPort("treeProbeOut", 0, [this](QWidget *dialog) {
        searchNets(stage.find(dialog, "btnAdd"), [this](QWidget *search) {
            lookFor(search, expression, ".*/u_(tx|rx)_fifo/do_pu.*");
            stage.same("nets found", stage.topRows(search, "treeWidget"),
                       {"beacon_soc/u_io/u_uart/u_tx_fifo/do_push",
                        "beacon_soc/u_io/u_uart/u_tx_fifo/do_pull",
                        "beacon_soc/u_io/u_uart/u_rx_fifo/do_push",
                        "beacon_soc/u_io/u_uart/u_rx_fifo/do_pull"});
            Hands::click(stage.find(search, "btnAddAll"));

            // What a probe can't drive is listed and can't be picked.
            lookFor(search, expression, "beacon_soc/(clk|u_sequencer/pattern.*)");
            stage.same("nets found", stage.topRows(search, "treeWidget"),
                       {"beacon_soc/u_sequencer/pattern[0:7]", "beacon_soc/clk"});
            take(search, {"beacon_soc/u_sequencer/pattern[0:7]", "beacon_soc/clk"});
            stage.takePicture(search, "search-expression");
            accept(search);
        });
        accept(dialog);
    });
    stage.same("signals of Probe Out0", signalRows("treeProbeOut", 0),
               {"beacon_soc/u_sequencer/pattern[0:7]", "beacon_soc/u_io/u_uart/u_tx_fifo/do_push",
                "beacon_soc/u_io/u_uart/u_tx_fifo/do_pull",
                "beacon_soc/u_io/u_uart/u_rx_fifo/do_push",
                "beacon_soc/u_io/u_uart/u_rx_fifo/do_pull"});
}

// The first row goes to the end. Without drags it is taken out and added again.
void Session::changeOrder()
{
    editPort("treeProbeIn", 0, [this](QWidget *dialog) {
        auto *tree = stage.find<QTreeWidget>(dialog, "treeWidget");
        if (Hands::canDrag()) {
            Hands::dragRow(tree, tree->topLevelItem(0),
                           tree->viewport()->rect().center() + QPoint(0, 50));
        } else {
            Hands::clickRow(tree, tree->topLevelItem(0));
            Hands::click(stage.find(dialog, "btnRemove"));
            addAll(dialog, "u_uart/tx_byte");
        }
        stage.takePicture(dialog, "order");
        accept(dialog);
    });
    stage.same("signals of Probe In0", signalRows("treeProbeIn", 0),
               {"beacon_soc/u_io/u_uart/tx_level[4:0]", "beacon_soc/u_io/u_uart/tx_empty",
                "beacon_soc/u_io/u_uart/tx_byte[7:0]"});
}

void Session::addAll(QWidget *dialog, const QString &pattern)
{
    searchNets(stage.find(dialog, "btnAdd"), [this, pattern](QWidget *search) {
        lookFor(search, normal, pattern);
        Hands::click(stage.find(search, "btnAddAll"));
        accept(search);
    });
}

void Session::setValue()
{
    auto *tree = stage.find<QTreeWidget>(view(), "treeValue");
    QWidget *line = tree->itemWidget(tree->topLevelItem(0), 0);
    stage.check("Probe Out0 has a line for its value", line != nullptr);
    if (!line)
        return;

    // The first two places hold the prefix and let only the arrow keys through.
    Hands::click(line);
    Hands::key(Qt::Key_Home);
    Hands::key(Qt::Key_Right);
    Hands::key(Qt::Key_Right);
    Hands::type("5a5");
    Hands::click(stage.find<QLineEdit>(view(), "lineEditUserClock"));
    Hands::key(Qt::Key_Tab);

    const QStringList state = pageState(view());
    stage.same("value and bits", state.mid(state.indexOf("0x5A5"), 6),
               {"0x5A5", "  01011010", "  0", "  1", "  0", "  1"});
}

void Session::pickUserClock()
{
    searchNets(stage.find(view(), "btnUserClock"), [this](QWidget *search) {
        lookFor(search, normal, "beacon_soc/clk");
        take(search, {"beacon_soc/clk"});
        accept(search);
    });
    stage.same("user clock", stage.find<QLineEdit>(view(), "lineEditUserClock")->text(),
               "beacon_soc/clk");
    stage.takePicture(stage.window, "workbench");
}

void Session::save()
{
    Hands::key(Qt::Key_S, Qt::ControlModifier);
    stage.same("tab", tabText(), "session.molk");
    stage.same(
        "file", fileState(pathOf("session.molk")),
        {"core 0 of beacon_soc", "  in 0", "    beacon_soc/u_io/u_uart/tx_level[4:0] (5 bits)",
         "    beacon_soc/u_io/u_uart/tx_empty", "    beacon_soc/u_io/u_uart/tx_byte[7:0] (8 bits)",
         "  in 1", "    beacon_soc/u_io/u_gpio/level[0]", "    beacon_soc/u_io/u_gpio/level[3]",
         "    beacon_soc/u_io/u_gpio/g_pin[0]/sampled",
         "    beacon_soc/u_io/u_gpio/g_pin[1]/sampled", "  out 0 = 0x5A5",
         "    beacon_soc/u_sequencer/pattern[0:7] (8 bits)",
         "    beacon_soc/u_io/u_uart/u_tx_fifo/do_push",
         "    beacon_soc/u_io/u_uart/u_tx_fifo/do_pull",
         "    beacon_soc/u_io/u_uart/u_rx_fifo/do_push",
         "    beacon_soc/u_io/u_uart/u_rx_fifo/do_pull", "  out 1 = 0x0",
         "  clock beacon_soc/clk"});
}

// Closing asks nothing, because everything is saved. The file is opened again from the tree of the
// project, into which the wizard has put it.
void Session::closeAndOpenAgain()
{
    const QStringList before = pageState(view());
    Hands::key(Qt::Key_W, Qt::ControlModifier);
    stage.check("the view closes", view() == nullptr);

    Hands::doubleClickRow(stage.find<QTreeWidget>(stage.window, "projectPanel"),
                          projectRow("session.molk"));
    stage.same("page", pageState(view()), before);
    stage.same("tab", tabText(), "session.molk");
}

void Session::editPort(const QString &treeName, int port, const Act &edit)
{
    stage.dialogs.expect("MOLK__ProbeDialog", edit);
    auto *tree = stage.find<QTreeWidget>(view(), treeName);
    Hands::doubleClickRow(tree, tree->topLevelItem(port));
}

void Session::searchNets(QWidget *button, const Act &act)
{
    stage.dialogs.expect("MOLK__MolkSignalSelectDialog", act);
    Hands::click(button);
}

// Return in the line runs the search.
void Session::lookFor(QWidget *dialog, const char *mode, const QString &pattern)
{
    Hands::click(stage.find<QRadioButton>(dialog, QLatin1String(mode)), QPoint(8, 8));
    auto *line = stage.find<QLineEdit>(dialog, "lineEditName");
    Hands::click(line);
    Hands::key(Qt::Key_A, Qt::ControlModifier);
    Hands::type(pattern);
    stage.same("pattern", line->text(), pattern);
    Hands::key(Qt::Key_Return);
}

// Selects the rows with these names, bits below their buses included, and moves them over.
void Session::take(QWidget *dialog, const QStringList &names)
{
    auto *found = stage.find<QTreeWidget>(dialog, "treeWidget");
    Qt::KeyboardModifiers modifiers;
    for (const QString &name : names) {
        QTreeWidgetItem *row =
            found->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
        stage.check("a row " + name, row != nullptr);
        if (row && row->parent())
            row->parent()->setExpanded(true);
        Hands::clickRow(found, row, modifiers);
        modifiers = Qt::ControlModifier;
    }
    Hands::click(stage.find(dialog, "btnAdd"));
}

void Session::accept(QWidget *dialog)
{
    press(dialog, QDialogButtonBox::Ok);
}

void Session::cancel(QWidget *dialog)
{
    press(dialog, QDialogButtonBox::Cancel);
}

void Session::press(QWidget *dialog, int button)
{
    const auto which = QDialogButtonBox::StandardButton(button);
    QWidget *found = stage.find<QDialogButtonBox>(dialog, "buttonBox")->button(which);
    stage.check("a button in " + dialog->objectName(), found != nullptr);
    if (found)
        Hands::click(found);
    stage.check("the button closes " + dialog->objectName(), !dialog->isVisible());
}

void Session::chooseFile(QWidget *dialog, const QString &path)
{
    Hands::click(stage.find<QLineEdit>(dialog, "fileNameEdit"));
    Hands::type(path);
    stage.closePopup();
    Hands::key(Qt::Key_Return);
    stage.check("the file dialog closes", !dialog->isVisible());
}

QTreeWidgetItem *Session::projectRow(const QString &text)
{
    const auto rows = stage.find<QTreeWidget>(stage.window, "projectPanel")
                          ->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    stage.check("the project holds once " + text, rows.size() == 1);
    return rows.value(0);
}

QStringList Session::signalRows(const QString &treeName, int port)
{
    QStringList texts;
    const QTreeWidgetItem *row = stage.find<QTreeWidget>(view(), treeName)->topLevelItem(port);
    const int count = row ? row->childCount() : 0;
    texts.reserve(count);
    for (int i = 0; i < count; ++i)
        texts.append(row->child(i)->text(0));
    return texts;
}

} // namespace Workbench
