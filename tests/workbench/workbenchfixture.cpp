// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "workbenchfixture.h"

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"
#include "pictures.h"
#include "projectpanel.h"
#include "signalitems.h"

#include "host/host.h"
#include "netlist/netlistbuilder.h"
#include "project/edamproject.h"

#include "core/iview.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

using Workbench::ProjectPanel;

WorkbenchFixture::WorkbenchFixture()
{
    QCoreApplication::setOrganizationName("molk-tests");
    QCoreApplication::setApplicationName("workbench");
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.filePath("settings"));
    Workbench::initPictures();
}

bool WorkbenchFixture::start()
{
    Workbench::CommandLine line;
    line.plugin = MOLK_PLUGIN_FILE;
    QString error;
    if (!runtime.start(line, &error)) {
        qWarning("%s", qPrintable(error));
        return false;
    }
    runtime.services().extraction().serveTop("chip", [] {
        Standin::NetlistBuilder builder("chip");
        builder.addNet(0, "clk");
        builder.addBus(0, "q", 7, 0);
        return builder.build();
    });
    // Pages and trees have room enough, whatever the screen.
    window()->resize(1280, 820);
    window()->show();
    return QTest::qWaitForWindowActive(window());
}

QString WorkbenchFixture::makeFile(const QString &name, const QByteArray &content)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(name));
    return file.fileName();
}

QString WorkbenchFixture::makeConfiguration(const QString &name)
{
    MOLK::MolkCore core(0);
    core.getProbeIn(0)->setSignalNet({net("chip/clk")});
    if (!MOLK::writeMOLKConfigToXml({&core}, path(name)))
        qFatal("can't write %s", qPrintable(name));
    return path(name);
}

QString WorkbenchFixture::makeProject(const QString &name, const QStringList &configurations)
{
    makeFile("chip.v", "module chip(input clk);\nendmodule\n");
    QByteArray text = "name: " + QByteArray(name.toUtf8()).replace(".eda.yml", "")
        + "\ntoplevel: chip\nfiles:\n  - name: chip.v\n    file_type: verilogSource\n";
    for (const QString &configuration : configurations)
        text += "  - name: " + configuration.toUtf8() + "\n    file_type: user\n";
    return makeFile(name, text);
}

bool WorkbenchFixture::openChip()
{
    makeFile("chip.v", "module chip(input clk);\nendmodule\n");
    makeFile("spare.v", "module spare;\nendmodule\n");
    makeFile("notes.txt", "Notes.\n");
    makeFile("chip.eda.yml",
             "name: chip\n"
             "files:\n"
             "  - {name: chip.v, file_type: verilogSource}\n"
             "  - {name: spare.v, file_type: verilogSource}\n"
             "  - {name: notes.txt, file_type: user}\n"
             "  - {name: a.molk, file_type: user}\n");
    const QString configuration = makeConfiguration("a.molk");
    QStringList errors;
    if (!window()->openProject(path("chip.eda.yml"), QString(), &errors)) {
        qWarning("%s", qPrintable(errors.join('\n')));
        return false;
    }
    window()->openPaths({configuration});
    return documents()->activeView() != nullptr;
}

Core::IView *WorkbenchFixture::openExample(const QString &name)
{
    const QString path = makeConfiguration(name);
    QStringList errors;
    if (!runtime.services().project()
        && !window()->openProject(makeProject("p.eda.yml"), QString(), &errors))
        return nullptr;
    window()->openPaths({path});
    return documents()->activeView();
}

QByteArray WorkbenchFixture::projectText()
{
    QFile file(path("chip.eda.yml"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("can't read the project");
    return file.readAll();
}

ProjectPanel *WorkbenchFixture::panel()
{
    return window()->findChild<ProjectPanel *>();
}

QTreeWidgetItem *WorkbenchFixture::row(const QString &text)
{
    const auto rows = panel()->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    if (rows.size() != 1)
        QTest::qFail(qPrintable("no row, or several, " + text), __FILE__, __LINE__);
    return rows.value(0);
}

// A window manager gives the focus back when a dialog closes; not every platform has one.
void WorkbenchFixture::activate()
{
    window()->activateWindow();
    if (!QTest::qWaitFor([this] { return QApplication::activeWindow() == window(); }))
        QTest::qFail("the window doesn't become active", __FILE__, __LINE__);
}

void WorkbenchFixture::clickRow(const QString &text, Qt::KeyboardModifiers modifiers)
{
    QTreeWidgetItem *item = row(text);
    if (!item)
        return;
    activate();
    panel()->scrollToItem(item);
    QTest::mouseClick(panel()->viewport(), Qt::LeftButton, modifiers,
                      panel()->visualItemRect(item).center());
    panel()->setFocus();
}

void WorkbenchFixture::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    activate();
    QTest::keyClick(window()->windowHandle(), key, modifiers);
}

void WorkbenchFixture::menu(const QByteArray &letters)
{
    key(Qt::Key(letters.at(0)), Qt::AltModifier);
    for (char letter : letters.mid(1)) {
        QWidget *popup = QApplication::activePopupWidget();
        if (!popup) {
            QTest::qFail(letters + ": there is no menu for a letter", __FILE__, __LINE__);
            return;
        }
        QTest::keyClick(popup, Qt::Key(letter));
    }
}

static QList<QWidget *> shownBanners(QWidget *view)
{
    QList<QWidget *> shown;
    if (!view)
        return shown;
    const auto all = view->findChildren<QWidget *>("MOLK__ReloadBanner");
    for (QWidget *banner : all) {
        if (!banner->isHidden())
            shown.append(banner);
    }
    return shown;
}

QStringList WorkbenchFixture::banners()
{
    // A question beside or after another one is shown when the event loop turns.
    QCoreApplication::processEvents();
    QStringList texts;
    const QList<QWidget *> shown = shownBanners(documents()->activeView());
    for (const QWidget *banner : shown)
        texts.append(banner->findChild<QLabel *>("labelFile")->text());
    return texts;
}

void WorkbenchFixture::answerBanner(const QString &button)
{
    const QList<QWidget *> shown = shownBanners(documents()->activeView());
    if (shown.size() != 1) {
        QTest::qFail("there isn't one question", __FILE__, __LINE__);
        return;
    }
    QTest::mouseClick(shown.constFirst()->findChild<QPushButton *>(button), Qt::LeftButton);
}

QAction *WorkbenchFixture::action(const QString &text)
{
    const auto actions = window()->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

QString WorkbenchFixture::saveText()
{
    return runtime.services().proxyAction("Core.Action.Save")->text();
}

void WorkbenchFixture::modify()
{
    auto *add = documents()->activeView()->findChild<QPushButton *>("btnProbeInAdd");
    QTest::mouseClick(add, Qt::LeftButton);
}

void WorkbenchFixture::reset()
{
    documents()->dropAllViews();
    // An unsaved project is answered for by no one here.
    ModalDriver driver;
    const Standin::EdamProject *project = runtime.services().project();
    if (project && project->hasUnsavedChanges())
        driver.expectDialog<QMessageBox>(
            [](QMessageBox *box) { box->button(QMessageBox::Discard)->click(); });
    window()->closeProject();
    QSettings().clear();
}
