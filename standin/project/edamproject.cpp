// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamproject.h"

#include "host/calllog.h"
#include "host/event.h"
#include "host/eventbus.h"
#include "project/edamfile.h"
#include "project/sourcewatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace Standin {

struct EdamProject::Private
{
    EdamFileState file;
    EdamContents contents;
    QHash<QString, int> positions; // of each path's first entry
    QString overridingTop;
    std::unique_ptr<SourceWatcher> watcher;

    QString absolute(const QString &name) const;
    int position(const QString &name) const { return positions.value(absolute(name), -1); }
    void index();
    void refreshWatch();
    bool change(const YamlNode &root, QString *error);
    bool noSuchFile(const QString &name, QString *error) const;
};

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
    index();
    refreshWatch();
    return true;
}

bool EdamProject::Private::noSuchFile(const QString &name, QString *error) const
{
    *error = QDir::toNativeSeparators(name) + " is not in the project.";
    return false;
}

static void send(const QString &name, const QVariantMap &values)
{
    EventBus::instance()->send(Event(name, values));
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
    for (const QString &name : qAsConst(names))
        appendFile(&data->file.root, name);

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
        send("TE.File.Modified", {{"file", path}});
    });
    d->refreshWatch();
}

bool EdamProject::addFile(const QString &path)
{
    Standin::record("addFile " + path);
    if (isRefused("addFile") || d->position(path) >= 0)
        return false;
    QString error;
    return addFiles({path}, &error);
}

bool EdamProject::addFiles(const QStringList &paths, QString *error)
{
    YamlNode root = d->file.root;
    QStringList added;
    for (const QString &path : paths) {
        const QString absolute = d->absolute(path);
        if (d->position(absolute) >= 0 || added.contains(absolute))
            continue;
        if (!QFileInfo(absolute).isFile()) {
            *error = QDir::toNativeSeparators(path) + " is not a file.";
            return false;
        }
        if (!appendFile(&root, nameInProject(absolute, d->file.directory))) {
            *error = sharedPartsError();
            return false;
        }
        added.append(absolute);
    }
    if (added.isEmpty())
        return true;
    if (!d->change(root, error))
        return false;

    for (const QString &path : qAsConst(added))
        send("TE.File.Add", {{"file", path}});
    return true;
}

bool EdamProject::removeFile(const QString &path, QString *error)
{
    const int position = d->position(path);
    if (position < 0)
        return d->noSuchFile(path, error);

    const EdamFile file = d->contents.files.at(position);
    YamlNode root = d->file.root;
    if (!Standin::removeFile(&root, position)) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    send("TE.File.Remove",
         {{"file", file.path}, {"enable", file.enabled}, {"type", int(file.kind)}});
    return true;
}

bool EdamProject::setFileEnabled(const QString &path, bool on, QString *error)
{
    const int position = d->position(path);
    if (position < 0)
        return d->noSuchFile(path, error);

    const EdamFile file = d->contents.files.at(position);
    if (file.enabled == on)
        return true;
    QStringList disabled;
    for (const EdamFile &other : qAsConst(d->contents.files)) {
        const bool enabled = other.path == file.path ? on : other.enabled;
        if (!enabled)
            disabled.append(other.name);
    }
    disabled.removeDuplicates();

    YamlNode root = d->file.root;
    if (!setToolOption(&root, disabledFilesKey, disabled)) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    send("TE.File.Change.Enable", {{"file", file.path}, {"enable", on}, {"type", int(file.kind)}});
    return true;
}

bool EdamProject::setFileKind(const QString &path, FileKind kind, QString *error)
{
    const int position = d->position(path);
    if (position < 0)
        return d->noSuchFile(path, error);

    const EdamFile file = d->contents.files.at(position);
    if (file.kind == kind)
        return true;
    YamlNode root = d->file.root;
    if (!setFileValue(&root, position, "file_type", YamlNode::string(typeOfKind(kind)))) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    send("TE.File.Change.Type",
         {{"file", file.path}, {"type", int(kind)}, {"previous", int(file.kind)}});
    return true;
}

bool EdamProject::setIncludeFile(const QString &path, bool on, QString *error)
{
    const int position = d->position(path);
    if (position < 0)
        return d->noSuchFile(path, error);

    const EdamFile file = d->contents.files.at(position);
    if (file.isInclude == on)
        return true;
    YamlNode root = d->file.root;
    const YamlNode value = on ? YamlNode::plain("true") : YamlNode();
    if (!setFileValue(&root, position, "is_include_file", value)) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    send("TE.File.Change.Type",
         {{"file", file.path}, {"type", int(file.kind)}, {"previous", int(file.kind)}});
    return true;
}

bool EdamProject::setTop(const QString &top, QString *error)
{
    const QStringList tops = top.isEmpty() ? QStringList() : QStringList(top);
    if (d->contents.tops == tops && d->overridingTop.isEmpty())
        return true;
    YamlNode root = d->file.root;
    if (!setTops(&root, tops)) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    d->overridingTop.clear();
    send("TE.Option.Change", {{"option", "TopModule"}});
    return true;
}

bool EdamProject::setOption(const QString &name, const QVariant &value, QString *error)
{
    if (name == "TopModule")
        return setTop(value.toString(), error);
    if (option(name) == value)
        return true;

    YamlNode root = d->file.root;
    if (!setToolOption(&root, name, value)) {
        *error = sharedPartsError();
        return false;
    }
    if (!d->change(root, error))
        return false;

    if (name == "Device")
        send("TE.Device.Change", {});
    else
        send("TE.Option.Change", {{"option", name}});
    return true;
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
    d->index();
    d->refreshWatch();
    return true;
}

} // namespace Standin
