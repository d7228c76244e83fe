// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The border to yaml-cpp: its events become a tree, a tree becomes its emitter's text, and its
// exceptions become an error.

#include "project/yamldocument.h"

#include <QTextCodec>

#include <yaml-cpp/depthguard.h>
#include <yaml-cpp/emitter.h>
#include <yaml-cpp/emitterstyle.h>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <sstream>

namespace Standin {

namespace {

class TreeBuilder : public YAML::EventHandler
{
public:
    YamlNode root;
    int documents = 0;
    int secondDocumentLine = 0;

    void OnDocumentStart(const YAML::Mark &mark) override
    {
        ++documents;
        if (documents == 2)
            secondDocumentLine = mark.line + 1;
    }

    void OnDocumentEnd() override {}

    void OnNull(const YAML::Mark &mark, YAML::anchor_t anchor) override
    {
        add(node(YamlNode::Null, mark, std::string(), anchor));
    }

    void OnAlias(const YAML::Mark &mark, YAML::anchor_t anchor) override
    {
        add(node(YamlNode::Alias, mark, std::string(), anchor));
    }

    void OnScalar(const YAML::Mark &mark, const std::string &tag, YAML::anchor_t anchor,
                  const std::string &value) override
    {
        YamlNode scalar = node(YamlNode::Scalar, mark, tag, anchor);
        scalar.text = QString::fromStdString(value);
        scalar.quoted = tag == "!";
        add(std::move(scalar));
    }

    void OnSequenceStart(const YAML::Mark &mark, const std::string &tag, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value style) override
    {
        begin(node(YamlNode::Sequence, mark, tag, anchor), style);
    }

    void OnSequenceEnd() override { end(); }

    void OnMapStart(const YAML::Mark &mark, const std::string &tag, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value style) override
    {
        begin(node(YamlNode::Map, mark, tag, anchor), style);
    }

    void OnMapEnd() override { end(); }

private:
    static YamlNode node(YamlNode::Kind kind, const YAML::Mark &mark, const std::string &tag,
                         YAML::anchor_t anchor)
    {
        YamlNode made;
        made.kind = kind;
        made.line = mark.line + 1;
        made.anchor = int(anchor);
        // "?" and "!" only say whether a scalar has quotes.
        if (tag != "?" && tag != "!")
            made.tag = QString::fromStdString(tag);
        return made;
    }

    void begin(YamlNode made, YAML::EmitterStyle::value style)
    {
        made.flow = style == YAML::EmitterStyle::Flow;
        open.push_back(std::move(made));
    }

    void end()
    {
        YamlNode made = std::move(open.back());
        open.pop_back();
        add(std::move(made));
    }

    void add(YamlNode made)
    {
        if (documents > 1)
            return;
        if (open.empty()) {
            root = std::move(made);
            return;
        }

        // The parser places an omitted value where the next token is.
        YamlNode &parent = open.back();
        if (parent.kind == YamlNode::Map && parent.items.size() % 2 == 1
            && made.kind == YamlNode::Null)
            made.line = parent.items.back().line;
        parent.items.push_back(std::move(made));
    }

    std::vector<YamlNode> open;
};

class TreeEmitter
{
public:
    QByteArray text(const YamlNode &root)
    {
        emitNode(root);
        return QByteArray(out.c_str(), int(out.size())) + "\n";
    }

private:
    void emitNode(const YamlNode &node)
    {
        if (node.kind == YamlNode::Alias) {
            out << YAML::Alias(anchorName(node));
            return;
        }
        if (node.anchor != 0)
            out << YAML::Anchor(anchorName(node));
        if (!node.tag.isEmpty())
            out << YAML::VerbatimTag(node.tag.toStdString());

        switch (node.kind) {
        case YamlNode::Null:
        case YamlNode::Alias:
            out << YAML::Null;
            break;
        case YamlNode::Scalar:
            emitScalar(node);
            break;
        case YamlNode::Sequence:
            emitSequence(node);
            break;
        case YamlNode::Map:
            emitMap(node);
            break;
        }
    }

    static std::string anchorName(const YamlNode &node)
    {
        return "id" + std::to_string(node.anchor);
    }

    // Only a text like this reads back as it is from the emitter's block form.
    static bool isBlock(const QString &text)
    {
        if (!text.endsWith('\n') || text.endsWith("\n\n") || text.startsWith(' ')
            || text.startsWith('\n'))
            return false;
        for (const QChar character : text) {
            if (character != '\n' && !character.isPrint())
                return false;
        }
        return true;
    }

    void emitScalar(const YamlNode &node)
    {
        const bool block = node.quoted && flowDepth == 0 && isBlock(node.text);
        if (block)
            out << YAML::Literal << node.text.chopped(1).toStdString(); // it ends the line itself
        else if (node.quoted)
            out << YAML::DoubleQuoted << node.text.toStdString();
        else
            out << node.text.toStdString();
    }

    void emitSequence(const YamlNode &node)
    {
        begin(node, YAML::BeginSeq);
        for (const YamlNode &item : node.items)
            emitNode(item);
        end(node, YAML::EndSeq);
    }

    void emitMap(const YamlNode &node)
    {
        begin(node, YAML::BeginMap);
        for (size_t i = 0; i + 1 < node.items.size(); i += 2) {
            out << YAML::Key;
            // A key in block form needs an explicit key, which the emitter doesn't make of it.
            ++flowDepth;
            emitNode(node.items[i]);
            --flowDepth;
            out << YAML::Value;
            emitNode(node.items[i + 1]);
        }
        end(node, YAML::EndMap);
    }

    // A block collection can't stand in a flow one, nor as a key of one line. An empty one has no
    // block form.
    bool isFlow(const YamlNode &node) const
    {
        return node.flow || node.items.empty() || flowDepth > 0;
    }

    void begin(const YamlNode &node, YAML::EMITTER_MANIP manipulator)
    {
        if (isFlow(node)) {
            out << YAML::Flow;
            ++flowDepth;
        }
        out << manipulator;
    }

    void end(const YamlNode &node, YAML::EMITTER_MANIP manipulator)
    {
        out << manipulator;
        if (isFlow(node))
            --flowDepth;
    }

    YAML::Emitter out;
    int flowDepth = 0;
};

} // namespace

// \return an error's text; empty if the bytes can be given to the parser.
static QString textFault(const QByteArray &bytes)
{
    if (bytes.contains('\0'))
        return "the file is not a text";

    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return "the file is not in UTF-8";
    return QString();
}

bool readYaml(const QByteArray &bytes, YamlNode *root, YamlError *error)
{
    const QString fault = textFault(bytes);
    if (!fault.isEmpty()) {
        *error = {0, fault};
        return false;
    }

    TreeBuilder builder;
    try {
        std::istringstream stream(bytes.toStdString());
        YAML::Parser parser(stream);
        while (builder.documents < 2 && parser.HandleNextDocument(builder))
            continue;
    } catch (const YAML::DeepRecursion &exception) {
        *error = {exception.mark.line + 1, "the nesting is too deep"};
        return false;
    } catch (const YAML::Exception &exception) {
        *error = {exception.mark.line + 1, QString::fromStdString(exception.msg)};
        return false;
    }

    if (builder.documents > 1) {
        *error = {builder.secondDocumentLine, "a second document begins"};
        return false;
    }
    *root = std::move(builder.root);
    return true;
}

QByteArray writeYaml(const YamlNode &root)
{
    // The emitter has corners in which what it writes is something else, so it isn't trusted.
    const QByteArray text = TreeEmitter().text(root);
    YamlNode back;
    YamlError error;
    if (!readYaml(text, &back, &error) || !isFaithful(root, back))
        return QByteArray();
    return text;
}

} // namespace Standin
