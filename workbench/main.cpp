// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "appearance.h"
#include "commandline.h"
#include "mainwindow.h"
#include "pictures.h"
#include "runtime.h"
#include "version.h"

#include <QApplication>
#include <QIcon>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

using namespace Workbench;

static void print(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

// What asks for no window has to work without a display too. Options of the toolkit, such as
// "-platform", are taken out of the arguments only when the display is opened; a line that has some
// is looked at then.
static bool hasToolkitOptions(const QStringList &arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const QString &argument) {
        return argument.size() > 2 && argument.startsWith('-') && !argument.startsWith("--");
    });
}

// Without a display the toolkit would abort the program, and leave a core behind.
static bool lacksDisplay(const QStringList &arguments)
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && !platform.startsWith("xcb"))
        return false;
    const bool isNamed = arguments.contains("-platform") || arguments.contains("-display");
    return !isNamed && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

static int answer(const CommandLine &line)
{
    const bool refused = line.request == CommandLine::Refuse;
    print(refused ? stderr : stdout, line.text);
    return refused ? UsageError : Success;
}

int main(int argc, char *argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setOrganizationName("molk");
    QApplication::setApplicationName("workbench");
    QApplication::setApplicationVersion(MOLK_VERSION);

    {
        const QCoreApplication withoutDisplay(argc, argv);
        const QStringList arguments = QCoreApplication::arguments();
        const CommandLine early = parseCommandLine(arguments);
        if (early.request != CommandLine::Run && !hasToolkitOptions(arguments))
            return answer(early);
        if (lacksDisplay(arguments)) {
            print(stderr, "workbench: there is no display to open a window on\n");
            return Failure;
        }
    }

    const QApplication app(argc, argv);
    const CommandLine line = parseCommandLine(QApplication::arguments());
    if (line.request != CommandLine::Run)
        return answer(line);

    // What the plug-in notes for its developers; the environment can bring it back.
    QLoggingCategory::setFilterRules("default.debug=false");

    initPictures();
    initStyle();
    QIcon icon;
    for (int size : {16, 32, 48, 64, 128})
        icon.addFile(QString(":/workbench/workbench-%1.png").arg(size));
    QApplication::setWindowIcon(icon);
    if (line.dark)
        useDarkColours();

    Runtime runtime;
    QString error;
    if (!runtime.start(line, &error)) {
        print(stderr, "workbench: " + error + "\n");
        return Failure;
    }

    // Documents are opened from the running event loop, because their dialogs belong to a window
    // that is shown.
    runtime.window()->show();
    QMetaObject::invokeMethod(
        runtime.window(), [&] { runtime.window()->openPaths(line.documents); },
        Qt::QueuedConnection);
    return QApplication::exec();
}
