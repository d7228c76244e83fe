// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/yamldocument.h"

#include <QHash>

namespace Standin {

static YamlNode makeNode(YamlNode::Kind kind, const QString &text = QString())
{
    YamlNode node;
    node.kind = kind;
    node.text = text;
    return node;
}

YamlNode YamlNode::string(const QString &text)
{
    YamlNode node = makeNode(Scalar, text);
    // What YAML 1.1 readers take for a number, a boolean or a date begins with one of these, or is
    // one of a few words.
    static const QStringList words{"y",   "n",    "yes",   "no",   "on",
                                   "off", "true", "false", "null", "~"};
    const bool looksLikeNumber =
        !text.isEmpty() && (text.at(0).isDigit() || QString("+-.").contains(text.at(0)));
    node.quoted = text.isEmpty() || looksLikeNumber || words.contains(text, Qt::CaseInsensitive);
    return node;
}

YamlNode YamlNode::plain(const QString &text)
{
    return makeNode(Scalar, text);
}

YamlNode YamlNode::sequence()
{
    return makeNode(Sequence);
}

YamlNode YamlNode::map()
{
    return makeNode(Map);
}

const YamlNode *YamlNode::value(const QString &key) const
{
    if (kind != Map)
        return nullptr;
    for (size_t i = 0; i + 1 < items.size(); i += 2) {
        if (items[i].kind == Scalar && items[i].text == key)
            return &items[i + 1];
    }
    return nullptr;
}

YamlNode *YamlNode::value(const QString &key)
{
    return const_cast<YamlNode *>(static_cast<const YamlNode *>(this)->value(key));
}

void YamlNode::setValue(const QString &key, const YamlNode &node)
{
    if (YamlNode *present = value(key)) {
        *present = node;
        return;
    }
    items.push_back(string(key));
    items.push_back(node);
}

void YamlNode::removeKey(const QString &key)
{
    const YamlNode *present = value(key);
    if (!present)
        return;
    const auto at = items.begin() + (present - items.data());
    items.erase(at - 1, at + 1);
}

static bool mayGetQuotes(const QString &text)
{
    for (const QChar character : text) {
        if (!character.isLetterOrNumber() && !QString("+-._:").contains(character))
            return true;
    }
    return false;
}

bool isFaithful(const YamlNode &a, const YamlNode &b)
{
    const bool sameQuotes = a.quoted == b.quoted || (b.quoted && mayGetQuotes(a.text));
    if (a.kind != b.kind || a.text != b.text || !sameQuotes || a.tag != b.tag
        || a.items.size() != b.items.size())
        return false;
    for (size_t i = 0; i < a.items.size(); ++i) {
        if (!isFaithful(a.items[i], b.items[i]))
            return false;
    }
    return true;
}

namespace {

class AliasExpander
{
public:
    bool expand(YamlNode *node)
    {
        if (--budget < 0)
            return false;

        if (node->kind == YamlNode::Alias) {
            const auto target = anchored.constFind(node->anchor);
            if (target == anchored.cend())
                return false;
            // What is stored has been expanded, so that only its size is left to be counted.
            *node = *target;
            budget -= size(*node);
            return budget >= 0;
        }

        const int anchor = std::exchange(node->anchor, 0);
        for (YamlNode &item : node->items) {
            if (!expand(&item))
                return false;
        }
        // Known only from here on, so an alias inside its own anchor finds none.
        if (anchor != 0)
            anchored.insert(anchor, *node);
        return true;
    }

private:
    static qint64 size(const YamlNode &node)
    {
        qint64 all = 1;
        for (const YamlNode &item : node.items)
            all += size(item);
        return all;
    }

    qint64 budget = 1000000;
    QHash<int, YamlNode> anchored;
};

} // namespace

bool expandAliases(YamlNode *root)
{
    YamlNode copy = *root;
    if (!AliasExpander().expand(&copy))
        return false;
    *root = std::move(copy);
    return true;
}

} // namespace Standin
