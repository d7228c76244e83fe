// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// How a project is changed: each operation edits a copy of the document, which is written as a
// whole, and tells of it afterwards.

#include "project/edamproject_p.h"

#include "host/calllog.h"
#include "host/event.h"
#include "host/eventbus.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace Standin {

static const char topOption[] = "TopModule";

void sendEvent(const QString &name, const QVariantMap &values)
{
    EventBus::instance()->send(Event(name, values));
}

bool EdamProject::Private::finish(bool edited, const YamlNode &root, QString *error)
{
    if (edited)
        return change(root, error);
    *error = sharedPartsError();
    return false;
}

bool EdamProject::Private::find(const QStringList &names, QVector<int> *found, QString *error) const
{
    found->clear();
    found->reserve(names.size());
    for (const QString &name : names) {
        const int at = position(name);
        if (at < 0) {
            *error = QDir::toNativeSeparators(name) + " is not in the project.";
            return false;
        }
        found->append(at);
    }
    std::sort(found->begin(), found->end());
    found->erase(std::unique(found->begin(), found->end()), found->end());
    return true;
}

// Those of the files at \a positions that \a isAffected picks: the positions themselves, and the
// files as they are before the change.
template<typename Condition>
static QList<EdamFile> pick(const QList<EdamFile> &files, QVector<int> *positions,
                            Condition isAffected)
{
    QList<EdamFile> picked;
    QVector<int> kept;
    for (int position : qAsConst(*positions)) {
        if (!isAffected(files.at(position)))
            continue;
        kept.append(position);
        picked.append(files.at(position));
    }
    *positions = kept;
    return picked;
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
    QStringList added;
    QStringList names;
    QSet<QString> seen;
    for (const QString &path : paths) {
        const QString absolute = d->absolute(path);
        if (d->position(absolute) >= 0 || seen.contains(absolute))
            continue;
        if (!QFileInfo(absolute).isFile()) {
            *error = QDir::toNativeSeparators(path) + " is not a file.";
            return false;
        }
        seen.insert(absolute);
        added.append(absolute);
        names.append(nameInProject(absolute, d->file.directory));
    }
    if (added.isEmpty())
        return true;

    YamlNode root = d->file.root;
    if (!d->finish(appendFiles(&root, names), root, error))
        return false;
    for (const QString &path : qAsConst(added))
        sendEvent("TE.File.Add", {{"file", path}});
    return true;
}

bool EdamProject::removeFiles(const QStringList &paths, QString *error)
{
    QVector<int> positions;
    if (!d->find(paths, &positions, error))
        return false;
    const QList<EdamFile> removed =
        pick(d->contents.files, &positions, [](const EdamFile &) { return true; });
    if (removed.isEmpty())
        return true;

    YamlNode root = d->file.root;
    if (!d->finish(Standin::removeFiles(&root, positions), root, error))
        return false;
    for (const EdamFile &file : removed) {
        sendEvent("TE.File.Remove",
                  {{"file", file.path}, {"enable", file.enabled}, {"type", int(file.kind)}});
    }
    return true;
}

bool EdamProject::setFilesEnabled(const QStringList &paths, bool on, QString *error)
{
    QVector<int> positions;
    if (!d->find(paths, &positions, error))
        return false;
    const QList<EdamFile> switched = pick(
        d->contents.files, &positions, [on](const EdamFile &file) { return file.enabled != on; });
    if (switched.isEmpty())
        return true;

    QSet<QString> switchedPaths;
    for (const EdamFile &file : switched)
        switchedPaths.insert(file.path);
    QStringList disabled;
    for (const EdamFile &file : qAsConst(d->contents.files)) {
        const bool enabled = switchedPaths.contains(file.path) ? on : file.enabled;
        if (!enabled)
            disabled.append(file.name);
    }
    disabled.removeDuplicates();

    YamlNode root = d->file.root;
    if (!d->finish(setToolOption(&root, disabledFilesKey, disabled), root, error))
        return false;
    for (const EdamFile &file : switched) {
        sendEvent("TE.File.Change.Enable",
                  {{"file", file.path}, {"enable", on}, {"type", int(file.kind)}});
    }
    return true;
}

bool EdamProject::setFilesKind(const QStringList &paths, FileKind kind, QString *error)
{
    QVector<int> positions;
    if (!d->find(paths, &positions, error))
        return false;
    const QList<EdamFile> changed = pick(
        d->contents.files, &positions, [kind](const EdamFile &file) { return file.kind != kind; });
    if (changed.isEmpty())
        return true;

    YamlNode root = d->file.root;
    const YamlNode type = YamlNode::string(typeOfKind(kind));
    if (!d->finish(setFileValue(&root, positions, "file_type", type), root, error))
        return false;
    for (const EdamFile &file : changed) {
        sendEvent("TE.File.Change.Type",
                  {{"file", file.path}, {"type", int(kind)}, {"previous", int(file.kind)}});
    }
    return true;
}

bool EdamProject::setIncludeFiles(const QStringList &paths, bool on, QString *error)
{
    QVector<int> positions;
    if (!d->find(paths, &positions, error))
        return false;
    const QList<EdamFile> changed = pick(
        d->contents.files, &positions, [on](const EdamFile &file) { return file.isInclude != on; });
    if (changed.isEmpty())
        return true;

    YamlNode root = d->file.root;
    const YamlNode value = on ? YamlNode::plain("true") : YamlNode();
    if (!d->finish(setFileValue(&root, positions, "is_include_file", value), root, error))
        return false;
    for (const EdamFile &file : changed) {
        sendEvent("TE.File.Change.Type",
                  {{"file", file.path}, {"type", int(file.kind)}, {"previous", int(file.kind)}});
    }
    return true;
}

bool EdamProject::moveFiles(const QStringList &paths, const QString &anchor, Place place,
                            QString *error)
{
    QVector<int> moved;
    QVector<int> goal;
    if (!d->find(paths, &moved, error) || !d->find({anchor}, &goal, error))
        return false;
    if (moved.contains(goal.constFirst()))
        return true;

    const QSet<int> leaving(moved.cbegin(), moved.cend());
    QVector<int> order;
    for (int i = 0; i < d->contents.files.size(); ++i) {
        if (leaving.contains(i))
            continue;
        const bool isGoal = i == goal.constFirst();
        if (isGoal && place == Before)
            order += moved;
        order.append(i);
        if (isGoal && place == After)
            order += moved;
    }
    if (std::is_sorted(order.cbegin(), order.cend()))
        return true;

    const QList<EdamFile> files = d->contents.files;
    YamlNode root = d->file.root;
    if (!d->finish(orderFiles(&root, order), root, error))
        return false;
    for (int position : qAsConst(moved))
        sendEvent("TE.File.Modified", {{"file", files.at(position).path}});
    return true;
}

bool EdamProject::setTop(const QString &top, QString *error)
{
    return setOption(topOption, top, error);
}

bool EdamProject::setOption(const QString &name, const QVariant &value, QString *error)
{
    return setOptions({{name, value}}, error);
}

static QStringList topList(const QVariant &value)
{
    const QString top = value.toString();
    return top.isEmpty() ? QStringList() : QStringList(top);
}

bool EdamProject::setOptions(const QVariantMap &values, QString *error)
{
    YamlNode root = d->file.root;
    bool edited = true;
    QStringList changed;
    for (auto entry = values.cbegin(); edited && entry != values.cend(); ++entry) {
        const bool isTop = entry.key() == topOption;
        const bool isSame = isTop
            ? d->contents.tops == topList(*entry) && d->overridingTop.isEmpty()
            : option(entry.key()) == *entry;
        if (isSame)
            continue;
        edited =
            isTop ? setTops(&root, topList(*entry)) : setToolOption(&root, entry.key(), *entry);
        changed.append(entry.key());
    }
    if (changed.isEmpty())
        return true;
    if (!d->finish(edited, root, error))
        return false;

    if (changed.contains(topOption))
        d->overridingTop.clear();
    for (const QString &name : qAsConst(changed)) {
        if (name == "Device")
            sendEvent("TE.Device.Change", {});
        else
            sendEvent("TE.Option.Change", {{"option", name}});
    }
    return true;
}

} // namespace Standin
