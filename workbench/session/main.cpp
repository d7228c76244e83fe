// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Plays the scripted editing session: "workbench-session [--dark] [DIR]".

#include "appearance.h"
#include "mainwindow.h"
#include "pictures.h"
#include "runtime.h"
#include "session.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QSettings>
#include <QTest>

#include <cstdio>

using namespace Workbench;

static QtMessageHandler nextHandler = nullptr;

// The offscreen platform has no window manager to tell the sizes of windows to or to raise them,
// and no keyboard to grab, and says so for each window. That is of no use to whoever reads what the
// session did.
static void dropPlatformNoise(QtMsgType type, const QMessageLogContext &context,
                              const QString &message)
{
    if (!message.startsWith("This plugin does not support "))
        nextHandler(type, context, message);
}

static bool playSession(const QString &folder)
{
    if (!QDir().mkpath(folder)) {
        fprintf(stderr, "workbench-session: can't make the directory %s\n", qPrintable(folder));
        return false;
    }

    // The user's own settings stay out of it, and the design is read anew each time.
    QDir(folder + "/cache").removeRecursively();
    qputenv("XDG_CACHE_HOME", (folder + "/cache").toLocal8Bit());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder + "/settings");
    QSettings().clear();

    Runtime runtime;
    QString error;
    if (!runtime.start(CommandLine(), &error)) {
        fprintf(stderr, "workbench-session: %s\n", qPrintable(error));
        return false;
    }
    // The pictures have the same size on every screen, and not every display has a window manager
    // that hands out the focus.
    runtime.window()->resize(1280, 820);
    runtime.window()->show();
    runtime.window()->activateWindow();
    if (!QTest::qWaitForWindowActive(runtime.window())) {
        fprintf(stderr, "workbench-session: the window doesn't become active\n");
        return false;
    }
    return Session(&runtime, folder).play();
}

int main(int argc, char *argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setOrganizationName("molk");
    QApplication::setApplicationName("workbench-session");
    const QApplication app(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Plays one editing session on the example with mouse and keys, compares what comes out, "
        "and leaves the written file and pictures in a directory.");
    parser.addHelpOption();
    parser.addOption({"dark", "Use dark colours."});
    parser.addPositionalArgument("directory", "Where it works; build/session if not given.",
                                 "[directory]");
    parser.process(app);
    if (parser.positionalArguments().size() > 1)
        parser.showHelp(UsageError);

    nextHandler = qInstallMessageHandler(dropPlatformNoise);
    QLoggingCategory::setFilterRules("default.debug=false");
    initPictures();
    initStyle();
    if (parser.isSet("dark"))
        useDarkColours();
    const QString folder = parser.positionalArguments().value(0, "build/session");
    return playSession(QDir(folder).absolutePath()) ? Success : Failure;
}
