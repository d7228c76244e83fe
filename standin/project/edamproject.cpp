// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamproject_p.h"

#include <QDir>
#include <QFileInfo>

namespace Standin {

QString EdamProject::Private::absolute(const QString &name) const
{
    return QDir::cleanPath(QDir(file.directory).absoluteFilePath(name));
}

void EdamProject::Private::index()
{
    positions.clear();
    for (int i = contents.files.size() - 1; i >= 0; --i)
        positions.insert(contents.files.at(i).path, i);
}

void EdamProject::Private::refreshWatch()
{
    if (!watcher)
        return;
    QStringList paths;
    for (const EdamFile &source : qAsConst(contents.files)) {
        if (source.kind != OtherKind)
            paths.append(source.path);
    }
    watcher->setFiles(paths);
}

// Writes the changed document and takes it over, or leaves everything as it was.
bool EdamProject::Private::change(const YamlNode &root, QString *error)
{
    EdamContents changed;
    EdamReport report;
    if (!readEdam(root, file.directory, &changed, &report)) {
        *error = "The project would become unusable: " + report.errors.constFirst().text + ".";
        return false;
    }
    if (!file.write(root, error))
        return false;

    contents = changed;
    hasUnsavedChanges = file.path.isEmpty();
    index();
    refreshWatch();
    return true;
}

EdamProject::EdamProject(std::unique_ptr<Private> data)
    : d(std::move(data))
{
    d->index();
}

EdamProject::~EdamProject() = default;

static QStringList lines(const QString &path, const QList<EdamFinding> &findings)
{
    QStringList made;
    for (const EdamFinding &finding : findings) {
        QString line = QDir::toNativeSeparators(path) + ": ";
        if (finding.line > 0)
            line.insert(line.size() - 1, QString::number(finding.line) + ":");
        made.append(line + finding.text);
    }
    return made;
}

std::unique_ptr<EdamProject> EdamProject::open(const QString &path, QStringList *errors,
                                               QStringList *warnings)
{
    auto data = std::make_unique<Private>();
    EdamReport report;
    if (data->file.read(path, &report))
        readEdam(data->file.root, data->file.directory, &data->contents, &report);

    *errors += lines(path, report.errors);
    if (warnings)
        *warnings += lines(path, report.warnings);
    if (!report.errors.isEmpty())
        return nullptr;
    return std::unique_ptr<EdamProject>(new EdamProject(std::move(data)));
}

std::unique_ptr<EdamProject> EdamProject::adHoc(const QStringList &files, const QString &top)
{
    auto data = std::make_unique<Private>();
    data->file.directory = QDir::currentPath();
    data->file.root = newEdamDocument(top.isEmpty() ? "project" : top);
    if (!top.isEmpty())
        setTops(&data->file.root, {top});
    QStringList names;
    for (const QString &file : files)
        names.append(nameInProject(file, data->file.directory));
    names.removeDuplicates();
    appendFiles(&data->file.root, names);

    EdamReport report;
    readEdam(data->file.root, data->file.directory, &data->contents, &report);
    return std::unique_ptr<EdamProject>(new EdamProject(std::move(data)));
}

QString EdamProject::name() const
{
    return d->contents.name;
}

QString EdamProject::path() const
{
    return d->file.path;
}

QString EdamProject::directory() const
{
    return d->file.directory;
}

bool EdamProject::hasUnsavedChanges() const
{
    return d->hasUnsavedChanges;
}

static TE::DesignFile record(const EdamFile &file)
{
    TE::DesignFile made;
    made.path = file.path;
    made.type = file.kind;
    made.enable = file.enabled;
    made.data.insert("name", file.name);
    made.data.insert("file_type", file.fileType);
    if (file.isInclude) {
        made.data.insert("is_include_file", true);
        made.data.insert("include_path", file.includeDirectory);
    }
    if (!file.library.isEmpty())
        made.data.insert("logical_name", file.library);
    if (!file.defines.isEmpty())
        made.data.insert("define", file.defines);
    return made;
}

QList<TE::DesignFile> EdamProject::files() const
{
    QList<TE::DesignFile> all;
    all.reserve(d->contents.files.size());
    for (const EdamFile &file : qAsConst(d->contents.files))
        all.append(record(file));
    return all;
}

TE::DesignFile EdamProject::file(const QString &path) const
{
    const int position = d->position(path);
    return position < 0 ? TE::DesignFile() : record(d->contents.files.at(position));
}

QString EdamProject::top() const
{
    if (!d->overridingTop.isEmpty())
        return d->overridingTop;
    return d->contents.tops.size() == 1 ? d->contents.tops.constFirst() : QString();
}

void EdamProject::overrideTop(const QString &top)
{
    d->overridingTop = top;
}

QVariant EdamProject::option(const QString &name) const
{
    if (name != "TopModule")
        return d->contents.options.value(name);
    return top().isEmpty() ? QVariant() : top();
}

QMap<QString, QVariant> EdamProject::designInfo() const
{
    EdamContents used = d->contents;
    if (!d->overridingTop.isEmpty())
        used.tops = QStringList(d->overridingTop);
    return Standin::designInfo(used, d->file.directory);
}

void EdamProject::watchSources()
{
    if (d->watcher)
        return;
    d->watcher = std::make_unique<SourceWatcher>();
    QObject::connect(d->watcher.get(), &SourceWatcher::modified, [](const QString &path) {
        sendEvent("TE.File.Modified", {{"file", path}});
    });
    d->refreshWatch();
}

bool EdamProject::saveAs(const QString &path, QString *error)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    YamlNode root = d->file.root;
    const QString directory = QFileInfo(absolute).absolutePath();
    // How a project without a file names its files was never anybody's choice.
    const bool isFirst = d->file.path.isEmpty();
    if (directory != d->file.directory && !moveEdam(&root, d->file.directory, directory, isFirst)) {
        *error = sharedPartsError();
        return false;
    }

    EdamFileState moved = d->file;
    moved.moveTo(absolute);
    if (!moved.write(root, error))
        return false;

    EdamReport report;
    EdamContents contents;
    readEdam(root, directory, &contents, &report);
    d->file = moved;
    d->contents = contents;
    d->hasUnsavedChanges = false;
    d->index();
    d->refreshWatch();
    return true;
}

} // namespace Standin
