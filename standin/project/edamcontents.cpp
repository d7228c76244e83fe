// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamcontents.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace Standin {

namespace {

enum class Truth { No, Yes, Neither };

Truth truthOf(const YamlNode &node)
{
    if (node.kind != YamlNode::Scalar || node.quoted)
        return Truth::Neither;
    const QString word = node.text.toLower();
    if (word == "true" || word == "yes" || word == "on")
        return Truth::Yes;
    return word == "false" || word == "no" || word == "off" ? Truth::No : Truth::Neither;
}

/// Reads one document. Every read...() reports what it finds wrong and leaves its target alone
/// then.
class EdamReader
{
public:
    EdamReader(const YamlNode &document, const QString &projectDirectory, EdamContents *target,
               EdamReport *findings)
        : root(document)
        , directory(projectDirectory)
        , contents(target)
        , report(findings)
    {
    }

    void read()
    {
        collectAnchors(root);
        if (resolve(root).kind != YamlNode::Map) {
            error(root, "document", "is not a map");
            return;
        }

        checkRepeats(root, "");
        readName();
        readVersion();
        readTops();
        readFiles();
        readParameters();
        readOptions();
    }

private:
    // The numbers of lines stay those of the places where the names are used.
    const YamlNode &resolve(const YamlNode &node) const
    {
        if (node.kind != YamlNode::Alias)
            return node;
        const YamlNode *target = anchors.value(node.anchor);
        return target ? *target : node;
    }

    const YamlNode *find(const YamlNode &map, const QString &key) const
    {
        return resolve(map).value(key);
    }

    void collectAnchors(const YamlNode &node)
    {
        if (node.kind != YamlNode::Alias && node.anchor != 0)
            anchors.insert(node.anchor, &node);
        for (const YamlNode &item : node.items)
            collectAnchors(item);
    }

    void error(const YamlNode &node, const QString &key, const QString &text)
    {
        report->errors.append({node.line, key + ": " + text});
    }

    void warning(const YamlNode &node, const QString &key, const QString &text)
    {
        report->warnings.append({node.line, key + ": " + text});
    }

    // A key that stands twice would be read by one program so and by another otherwise.
    void checkRepeats(const YamlNode &map, const QString &prefix)
    {
        QSet<QString> seen;
        const std::vector<YamlNode> &items = resolve(map).items;
        for (size_t i = 0; i + 1 < items.size(); i += 2) {
            if (items[i].kind != YamlNode::Scalar)
                continue;
            if (seen.contains(items[i].text))
                error(items[i], prefix + items[i].text, "stands here for the second time");
            seen.insert(items[i].text);
        }
    }

    bool readText(const YamlNode &map, const QString &prefix, const QString &key, QString *text)
    {
        const YamlNode *node = find(map, key);
        if (!node || resolve(*node).kind == YamlNode::Null)
            return true;
        if (resolve(*node).kind != YamlNode::Scalar) {
            error(*node, prefix + key, "is not a text");
            return false;
        }
        *text = resolve(*node).text;
        return true;
    }

    bool readTexts(const YamlNode &node, const QString &key, QStringList *texts)
    {
        const YamlNode &sequence = resolve(node);
        QStringList found;
        for (size_t i = 0; i < sequence.items.size(); ++i) {
            const YamlNode &item = sequence.items[i];
            if (resolve(item).kind != YamlNode::Scalar) {
                error(item, key + "[" + QString::number(i) + "]", "is not a text");
                return false;
            }
            found.append(resolve(item).text);
        }
        *texts = found;
        return true;
    }

    QString absolute(const QString &path) const
    {
        return QDir::cleanPath(QDir(directory).absoluteFilePath(path));
    }

    void readName()
    {
        if (readText(root, "", "name", &contents->name) && contents->name.isEmpty())
            error(root, "name", "is missing");
    }

    void readVersion()
    {
        QString version;
        if (readText(root, "", "version", &version) && !version.isEmpty()
            && version.section('.', 0, 0) != "0")
            warning(*find(root, "version"), "version",
                    "is " + version + ", what is newer than 0 may be misread");
    }

    void readTops()
    {
        const YamlNode *node = find(root, "toplevel");
        if (!node)
            return;

        static const QRegularExpression blanks("\\s+");
        const YamlNode &toplevel = resolve(*node);
        if (toplevel.kind == YamlNode::Sequence)
            readTexts(*node, "toplevel", &contents->tops);
        else if (toplevel.kind == YamlNode::Scalar)
            contents->tops = toplevel.text.split(blanks, Qt::SkipEmptyParts);
        else if (toplevel.kind == YamlNode::Map)
            error(*node, "toplevel", "is neither a text nor a list");
    }

    void readFiles()
    {
        const YamlNode *node = find(root, "files");
        if (!node || resolve(*node).kind == YamlNode::Null)
            return;
        if (resolve(*node).kind != YamlNode::Sequence) {
            error(*node, "files", "is not a list");
            return;
        }

        const std::vector<YamlNode> &items = resolve(*node).items;
        contents->files.reserve(int(items.size()));
        for (size_t i = 0; i < items.size(); ++i)
            readFile(items[i], "files[" + QString::number(i) + "]");
    }

    void readFile(const YamlNode &entry, const QString &key)
    {
        if (resolve(entry).kind != YamlNode::Map) {
            error(entry, key, "is not a map");
            return;
        }

        const QString prefix = key + ".";
        checkRepeats(entry, prefix);
        EdamFile file;
        if (readText(entry, prefix, "name", &file.name) && file.name.isEmpty())
            error(entry, prefix + "name", "is missing");
        file.path = absolute(file.name);
        file.fileType = fileTypeOf(file.name);
        readText(entry, prefix, "file_type", &file.fileType);
        file.kind = kindOfType(file.fileType);
        file.standard = file.fileType.section('-', 1);
        readText(entry, prefix, "logical_name", &file.library);
        readFileDefines(entry, prefix, &file.defines);
        readInclude(entry, prefix, &file);
        contents->files.append(file);
    }

    void readInclude(const YamlNode &entry, const QString &prefix, EdamFile *file)
    {
        if (const YamlNode *flag = find(entry, "is_include_file")) {
            const Truth truth = truthOf(resolve(*flag));
            if (truth == Truth::Neither && resolve(*flag).kind != YamlNode::Null)
                error(*flag, prefix + "is_include_file", "is neither true nor false");
            file->isInclude = truth == Truth::Yes;
        }
        QString includePath;
        readText(entry, prefix, "include_path", &includePath);
        if (file->isInclude)
            file->includeDirectory = includePath.isEmpty() ? QFileInfo(file->path).absolutePath()
                                                           : absolute(includePath);
    }

    void readFileDefines(const YamlNode &entry, const QString &prefix, QVariantMap *defines)
    {
        const YamlNode *node = find(entry, "define");
        if (!node || resolve(*node).kind == YamlNode::Null)
            return;
        if (resolve(*node).kind != YamlNode::Map) {
            error(*node, prefix + "define", "is not a map");
            return;
        }

        checkRepeats(*node, prefix + "define.");
        const std::vector<YamlNode> &items = resolve(*node).items;
        for (size_t i = 0; i + 1 < items.size(); i += 2) {
            const YamlNode &value = resolve(items[i + 1]);
            if (items[i].kind != YamlNode::Scalar || value.kind == YamlNode::Map
                || value.kind == YamlNode::Sequence)
                error(items[i], prefix + "define." + items[i].text, "is not a text");
            else
                defines->insert(items[i].text, defineText(value));
        }
    }

    static QString defineText(const YamlNode &value)
    {
        const Truth truth = truthOf(value);
        if (truth == Truth::Neither)
            return value.text;
        return truth == Truth::Yes ? "1" : "0";
    }

    void readParameters()
    {
        const YamlNode *node = find(root, "parameters");
        if (!node || resolve(*node).kind == YamlNode::Null)
            return;
        if (resolve(*node).kind != YamlNode::Map) {
            error(*node, "parameters", "is not a map");
            return;
        }

        checkRepeats(*node, "parameters.");
        const std::vector<YamlNode> &items = resolve(*node).items;
        for (size_t i = 0; i + 1 < items.size(); i += 2) {
            const QString key = "parameters." + items[i].text;
            if (items[i].kind != YamlNode::Scalar || resolve(items[i + 1]).kind != YamlNode::Map)
                error(items[i], key, "is not a map");
            else
                readParameter(items[i].text, items[i + 1], key + ".");
        }
    }

    void readParameter(const QString &name, const YamlNode &entry, const QString &prefix)
    {
        checkRepeats(entry, prefix);
        QString paramType;
        QString dataType;
        readText(entry, prefix, "paramtype", &paramType);
        readText(entry, prefix, "datatype", &dataType);

        const YamlNode *node = find(entry, "default");
        if (!node || resolve(*node).kind == YamlNode::Null)
            return;
        const YamlNode &value = resolve(*node);
        if (value.kind != YamlNode::Scalar) {
            error(*node, prefix + "default", "is not a single value");
            return;
        }

        if (paramType == "vlogdefine")
            contents->defines.insert(name, defineText(value));
        else if (paramType == "vlogparam")
            contents->parameters.insert(name, typedValue(value, dataType));
        else if (paramType == "generic")
            contents->generics.insert(name, typedValue(value, dataType));
    }

    // What doesn't read as the data type says is left as text, for the front end to judge.
    static QVariant typedValue(const YamlNode &value, const QString &dataType)
    {
        if (dataType == "str" || dataType == "file" || value.quoted)
            return value.text;
        const Truth truth = truthOf(value);
        if (truth != Truth::Neither)
            return truth == Truth::Yes;

        bool ok = false;
        const qlonglong integer = value.text.toLongLong(&ok, value.text.contains("0x") ? 16 : 10);
        if (ok && dataType == "bool")
            return integer != 0;
        if (ok)
            return integer;
        const double real = value.text.toDouble(&ok);
        return ok ? QVariant(real) : QVariant(value.text);
    }

    void readOptions()
    {
        const YamlNode *tools = find(root, "tool_options");
        if (!tools || resolve(*tools).kind == YamlNode::Null)
            return;
        if (resolve(*tools).kind != YamlNode::Map) {
            error(*tools, "tool_options", "is not a map");
            return;
        }
        checkRepeats(*tools, "tool_options.");
        const YamlNode *ours = find(*tools, "workbench");
        if (!ours || resolve(*ours).kind == YamlNode::Null)
            return;
        if (resolve(*ours).kind != YamlNode::Map) {
            error(*ours, "tool_options.workbench", "is not a map");
            return;
        }

        const QString prefix = "tool_options.workbench.";
        checkRepeats(*ours, prefix);
        const std::vector<YamlNode> &items = resolve(*ours).items;
        for (size_t i = 0; i + 1 < items.size(); i += 2)
            readOption(items[i], items[i + 1], prefix + items[i].text);
    }

    void readOption(const YamlNode &key, const YamlNode &node, const QString &path)
    {
        const YamlNode &value = resolve(node);
        if (key.kind != YamlNode::Scalar || value.kind == YamlNode::Null)
            return;

        const bool wantsList = key.text == disabledFilesKey || key.text == "IncludePath";
        if (value.kind == YamlNode::Map || (wantsList && value.kind != YamlNode::Sequence)) {
            error(node, path,
                  QLatin1String(wantsList ? "is not a list" : "is neither a text nor a list"));
            return;
        }
        QStringList texts;
        if (value.kind == YamlNode::Scalar)
            contents->options.insert(key.text, value.text);
        else if (!readTexts(node, path, &texts))
            return;
        else if (key.text == disabledFilesKey)
            disable(texts);
        else
            contents->options.insert(key.text, texts);
    }

    void disable(const QStringList &names)
    {
        QSet<QString> paths;
        for (const QString &name : names)
            paths.insert(absolute(name));
        for (EdamFile &file : contents->files)
            file.enabled = !paths.contains(file.path);
    }

    const YamlNode &root;
    QString directory;
    EdamContents *contents;
    EdamReport *report;
    QHash<int, const YamlNode *> anchors;
};

} // namespace

bool readEdam(const YamlNode &root, const QString &directory, EdamContents *contents,
              EdamReport *report)
{
    EdamReader(root, directory, contents, report).read();
    return report->errors.isEmpty();
}

} // namespace Standin
