// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "documentmutator.h"

#include <QPair>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <memory>
#include <vector>

namespace {

struct Node
{
    QString name; ///< Empty for a text.
    QString text;
    QVector<QPair<QString, QString>> attributes;
    std::vector<std::unique_ptr<Node>> children;
};

using Children = std::vector<std::unique_ptr<Node>>;

} // namespace

static const int maximumDepth = 60;

static bool readChildren(QXmlStreamReader *xml, Node *parent, int depth)
{
    while (!xml->atEnd()) {
        switch (xml->readNext()) {
        case QXmlStreamReader::StartElement: {
            auto child = std::make_unique<Node>();
            child->name = xml->qualifiedName().toString();
            const QXmlStreamAttributes attributes = xml->attributes();
            for (const QXmlStreamAttribute &attribute : attributes) {
                child->attributes.append(
                    {attribute.qualifiedName().toString(), attribute.value().toString()});
            }
            if (depth > maximumDepth || !readChildren(xml, child.get(), depth + 1))
                return false;
            parent->children.push_back(std::move(child));
            break;
        }
        case QXmlStreamReader::Characters: {
            auto child = std::make_unique<Node>();
            child->text = xml->text().toString();
            parent->children.push_back(std::move(child));
            break;
        }
        case QXmlStreamReader::EndElement:
            return true;
        default:
            break;
        }
    }
    return !xml->hasError();
}

static void writeNode(QXmlStreamWriter *xml, const Node &node)
{
    if (node.name.isEmpty()) {
        xml->writeCharacters(node.text);
        return;
    }
    xml->writeStartElement(node.name);
    for (const auto &[name, value] : node.attributes)
        xml->writeAttribute(name, value);
    for (const std::unique_ptr<Node> &child : node.children)
        writeNode(xml, *child);
    xml->writeEndElement();
}

static std::unique_ptr<Node> copyOf(const Node &node)
{
    auto copy = std::make_unique<Node>();
    copy->name = node.name;
    copy->text = node.text;
    copy->attributes = node.attributes;
    for (const std::unique_ptr<Node> &child : node.children)
        copy->children.push_back(copyOf(*child));
    return copy;
}

static void collect(Node *node, QVector<Node *> *all)
{
    all->append(node);
    for (const std::unique_ptr<Node> &child : node->children)
        collect(child.get(), all);
}

namespace {

class Mutation
{
public:
    Mutation(Node *document, unsigned seed)
        : root(document)
        , random(seed)
    {
    }

    void change()
    {
        QVector<Node *> all;
        collect(root, &all);
        Node *node = all.at(below(all.size()));
        switch (below(8)) {
        case 0:
            return changeValue(node);
        case 1:
            return addAttribute(node);
        case 2:
            return dropAttribute(node);
        case 3:
            return rename(node);
        case 4:
            return repeatChild(node);
        case 5:
            return dropChild(node);
        case 6:
            return addText(node);
        default:
            return graft(node, *all.at(below(all.size())));
        }
    }

private:
    int below(int limit) { return int(random.bounded(limit)); }

    QString oneOf(const QStringList &choices) { return choices.at(below(choices.size())); }

    QString name()
    {
        return oneOf({"MOLK_CONFIG",  "Version", "core",   "probeIn", "probeOut", "net",
                      "bus",          "bit",     "signal", "id",      "module",   "userClock",
                      "useUserClock", "number",  "value",  "name",    "alias",    "selectable",
                      "found",        "kind",    "x",      "xmlns",   "a:b"});
    }

    QString value()
    {
        return oneOf({"",
                      "0",
                      "-1",
                      "1",
                      "63",
                      "64",
                      "2147483647",
                      "2147483648",
                      "-2147483648",
                      "01",
                      "+1",
                      " 1",
                      "1.0",
                      "2.0",
                      "true",
                      "false",
                      "True",
                      "0x0",
                      "0xFF",
                      "0x0123456789ABCDEF",
                      "top/u0/clk",
                      "q[7:0]",
                      "\\u0000",
                      "\\u005C",
                      "\\",
                      "\\uD800",
                      "a\tb\nc\rd",
                      "<&>\"'",
                      QString(300, QLatin1Char('n')),
                      QString::fromUtf8("\xC3\xA4\xF0\x9F\x92\xA1")});
    }

    void changeValue(Node *node)
    {
        if (!node->attributes.isEmpty())
            node->attributes[below(node->attributes.size())].second = value();
        else
            node->text = value();
    }

    void addAttribute(Node *node)
    {
        const QString added = name();
        for (const auto &[existing, text] : qAsConst(node->attributes)) {
            if (existing == added)
                return;
        }
        node->attributes.insert(below(node->attributes.size() + 1), {added, value()});
    }

    void dropAttribute(Node *node)
    {
        if (!node->attributes.isEmpty())
            node->attributes.remove(below(node->attributes.size()));
    }

    void rename(Node *node)
    {
        if (!node->name.isEmpty())
            node->name = name();
    }

    void repeatChild(Node *node)
    {
        if (node->children.empty())
            return;
        const Node &child = *node->children.at(std::size_t(below(int(node->children.size()))));
        insert(node, copyOf(child));
    }

    void dropChild(Node *node)
    {
        if (!node->children.empty())
            node->children.erase(node->children.begin() + below(int(node->children.size())));
    }

    void addText(Node *node)
    {
        auto text = std::make_unique<Node>();
        text->text = value();
        insert(node, std::move(text));
    }

    void graft(Node *node, const Node &from) { insert(node, copyOf(from)); }

    void insert(Node *node, std::unique_ptr<Node> child)
    {
        // The text of the document has one element, and a text holds none.
        if (node == root || node->name.isEmpty())
            return;
        node->children.insert(node->children.begin() + below(int(node->children.size()) + 1),
                              std::move(child));
    }

    Node *root;
    QRandomGenerator random;
};

} // namespace

QByteArray mutatedDocument(const QByteArray &bytes, unsigned seed)
{
    QXmlStreamReader reader(bytes);
    reader.setNamespaceProcessing(false);
    Node document;
    if (!readChildren(&reader, &document, 0))
        return QByteArray();

    Mutation mutation(&document, seed);
    for (unsigned i = 0; i <= seed % 4; ++i)
        mutation.change();

    QByteArray changed;
    QXmlStreamWriter writer(&changed);
    writer.writeStartDocument();
    for (const std::unique_ptr<Node> &child : document.children) {
        if (!child->name.isEmpty())
            writeNode(&writer, *child);
    }
    writer.writeEndDocument();
    return changed;
}
