// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamfile.h"

#include <QDir>
#include <QSet>

#include <algorithm>

namespace Standin {

QString sharedPartsError()
{
    return "The project file repeats parts through anchors in a way that cannot be changed here.";
}

YamlNode newEdamDocument(const QString &name)
{
    YamlNode root = YamlNode::map();
    root.setValue("version", YamlNode::plain("0.2.1"));
    root.setValue("name", YamlNode::string(name));
    root.setValue("files", YamlNode::sequence());
    return root;
}

QString nameInProject(const QString &path, const QString &directory)
{
    const QString absolute = QDir::cleanPath(QDir(directory).absoluteFilePath(path));
    const QString relative = QDir(directory).relativeFilePath(absolute);

    // A relative way that leads up to the root says less than the absolute one.
    const QString first = absolute.section('/', 1, 1);
    return first == directory.section('/', 1, 1) ? relative : absolute;
}

QString typeOfKind(FileKind kind)
{
    switch (kind) {
    case VerilogKind:
        return "verilogSource";
    case SystemVerilogKind:
        return "systemVerilogSource";
    case VhdlKind:
        return "vhdlSource";
    case OtherKind:
        break;
    }
    return "user";
}

// The value under \a key of the map \a map, made of the kind \a kind if it is missing or null.
static YamlNode *ensure(YamlNode *map, const QString &key, YamlNode::Kind kind)
{
    YamlNode *value = map->value(key);
    if (!value || value->kind == YamlNode::Null) {
        YamlNode made;
        made.kind = kind;
        map->setValue(key, made);
        value = map->value(key);
    }
    return value;
}

static YamlNode stringList(const QStringList &texts)
{
    YamlNode list = YamlNode::sequence();
    for (const QString &text : texts)
        list.items.push_back(YamlNode::string(text));
    return list;
}

bool appendFiles(YamlNode *root, const QStringList &names)
{
    if (!expandAliases(root))
        return false;

    std::vector<YamlNode> &files = ensure(root, "files", YamlNode::Sequence)->items;
    for (const QString &name : names) {
        YamlNode entry = YamlNode::map();
        entry.setValue("name", YamlNode::string(name));
        entry.setValue("file_type", YamlNode::string(fileTypeOf(name)));
        if (isIncludeName(name))
            entry.setValue("is_include_file", YamlNode::plain("true"));
        files.push_back(entry);
    }
    return true;
}

// Takes \a names out of the list of files that are switched off, and the list too if that empties
// it.
static void forgetDisabled(YamlNode *root, const QSet<QString> &names)
{
    YamlNode *tools = root->value("tool_options");
    YamlNode *ours = tools ? tools->value("workbench") : nullptr;
    YamlNode *disabled = ours ? ours->value(disabledFilesKey) : nullptr;
    if (!disabled)
        return;

    std::vector<YamlNode> &items = disabled->items;
    items.erase(
        std::remove_if(items.begin(), items.end(),
                       [&names](const YamlNode &item) { return names.contains(item.text); }),
        items.end());
    if (items.empty())
        ours->removeKey(disabledFilesKey);
}

bool removeFiles(YamlNode *root, const QVector<int> &positions)
{
    if (!expandAliases(root))
        return false;

    std::vector<YamlNode> &files = root->value("files")->items;
    std::vector<YamlNode> kept;
    QSet<QString> names;
    auto next = positions.cbegin();
    for (int i = 0; i < int(files.size()); ++i) {
        if (next == positions.cend() || *next != i) {
            kept.push_back(std::move(files[size_t(i)]));
            continue;
        }
        names.insert(files[size_t(i)].value("name")->text);
        ++next;
    }
    files = std::move(kept);
    forgetDisabled(root, names);
    return true;
}

bool orderFiles(YamlNode *root, const QVector<int> &order)
{
    if (!expandAliases(root))
        return false;

    std::vector<YamlNode> &files = root->value("files")->items;
    std::vector<YamlNode> ordered;
    ordered.reserve(files.size());
    for (int position : order)
        ordered.push_back(std::move(files[size_t(position)]));
    files = std::move(ordered);
    return true;
}

bool setFileValue(YamlNode *root, const QVector<int> &positions, const QString &key,
                  const YamlNode &value)
{
    if (!expandAliases(root))
        return false;

    for (int position : positions) {
        YamlNode &entry = root->value("files")->items[size_t(position)];
        if (value.kind == YamlNode::Null)
            entry.removeKey(key);
        else
            entry.setValue(key, value);
    }
    return true;
}

bool setTops(YamlNode *root, const QStringList &tops)
{
    if (!expandAliases(root))
        return false;

    if (tops.isEmpty())
        root->removeKey("toplevel");
    else
        root->setValue("toplevel", YamlNode::string(tops.join(' ')));
    return true;
}

bool setToolOption(YamlNode *root, const QString &name, const QVariant &value)
{
    if (!expandAliases(root))
        return false;

    YamlNode *tools = ensure(root, "tool_options", YamlNode::Map);
    YamlNode *ours = ensure(tools, "workbench", YamlNode::Map);
    const bool isList = value.userType() == QMetaType::QStringList;
    if (!value.isValid() || (isList && value.toStringList().isEmpty()))
        ours->removeKey(name);
    else
        ours->setValue(
            name, isList ? stringList(value.toStringList()) : YamlNode::string(value.toString()));
    return true;
}

// Makes the path in \a node name the same file from the directory \a to.
static void movePath(YamlNode *node, const QString &from, const QString &to, bool absoluteToo)
{
    if (!node || node->kind != YamlNode::Scalar || node->text.isEmpty())
        return;
    if (absoluteToo || QDir::isRelativePath(node->text))
        *node = YamlNode::string(nameInProject(QDir(from).absoluteFilePath(node->text), to));
}

bool moveEdam(YamlNode *root, const QString &from, const QString &to, bool absoluteToo)
{
    if (!expandAliases(root))
        return false;

    if (YamlNode *files = root->value("files")) {
        for (YamlNode &entry : files->items) {
            movePath(entry.value("name"), from, to, absoluteToo);
            movePath(entry.value("include_path"), from, to, absoluteToo);
        }
    }
    YamlNode *tools = root->value("tool_options");
    YamlNode *ours = tools ? tools->value("workbench") : nullptr;
    if (!ours)
        return true;
    for (const QString &key : {QString(disabledFilesKey), QString("IncludePath")}) {
        if (YamlNode *list = ours->value(key)) {
            for (YamlNode &item : list->items)
                movePath(&item, from, to, absoluteToo);
        }
    }
    return true;
}

} // namespace Standin
