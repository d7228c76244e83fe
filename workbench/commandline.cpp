// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "commandline.h"

#include "filekinds.h"
#include "version.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace Workbench {

static CommandLine refuse(const QString &reason)
{
    CommandLine line;
    line.request = CommandLine::Refuse;
    line.text = "workbench: " + reason + "\nTry 'workbench --help'.\n";
    return line;
}

static CommandLine print(const QString &text)
{
    CommandLine line;
    line.request = CommandLine::PrintText;
    line.text = text;
    return line;
}

// Sorts the files by what they are. Returns why they can't be taken together, or nothing.
static QString sortFiles(CommandLine &line, const QStringList &files)
{
    for (const QString &file : files) {
        const QString path = QFileInfo(file).absoluteFilePath();
        const FileKind kind = fileKind(path);
        if (isDesignFile(kind)) {
            line.designFiles.append(path);
        } else if (kind == FileKind::Configuration) {
            line.documents.append(path);
        } else if (kind != FileKind::Project) {
            return "'" + file + "' is no kind of file that can be opened";
        } else if (!line.project.isEmpty()) {
            return "only one project can be open";
        } else {
            line.project = path;
        }
    }
    if (!line.project.isEmpty() && !line.designFiles.isEmpty())
        return QStringLiteral("source files can't be named beside a project");
    if (!line.top.isEmpty() && line.project.isEmpty() && line.designFiles.isEmpty())
        return QStringLiteral("--top needs a project or source files");
    return QString();
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    const QCommandLineOption project("project", "Open the project <file>, an EDAM file (.eda.yml).",
                                     "file");
    const QCommandLineOption top("top", "Use <name> as the top module of the design.", "name");
    // Without the hyphen it would be an option of Qt's.
    const QCommandLineOption plugin(
        "plug-in",
        "Load the plug-in library <file> instead of the one in ../plugin or "
        "../lib/molk beside this program.",
        "file");
    const QCommandLineOption dark("dark", "Use dark colours, whatever the desktop says.");
    const QCommandLineOption help({"h", "help"}, "Print this help.");
    const QCommandLineOption version({"v", "version"}, "Print the version.");

    QCommandLineParser parser;
    parser.setApplicationDescription("Edits virtual probe cores (.molk) against an RTL design.");
    parser.addOptions({project, top, plugin, dark, help, version});
    parser.addPositionalArgument("file",
                                 "Configurations to open (.molk), a project (.eda.yml), or the "
                                 "source files of a design (.v .sv .vhd .json).",
                                 "[file...]");

    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (parser.isSet(help))
        return print(parser.helpText());
    if (parser.isSet(version))
        return print(QLatin1String("workbench " MOLK_VERSION "\n"));

    CommandLine line;
    line.dark = parser.isSet(dark);
    line.top = parser.value(top);
    for (const QCommandLineOption &option : {project, top, plugin}) {
        if (parser.values(option).size() > 1)
            return refuse("--" + option.names().constFirst() + " can be given once");
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return refuse("--" + option.names().constFirst() + " needs a value");
    }
    if (parser.isSet(project))
        line.project = QFileInfo(parser.value(project)).absoluteFilePath();
    if (parser.isSet(plugin))
        line.plugin = QFileInfo(parser.value(plugin)).absoluteFilePath();

    const QString conflict = sortFiles(line, parser.positionalArguments());
    return conflict.isEmpty() ? line : refuse(conflict);
}

} // namespace Workbench
