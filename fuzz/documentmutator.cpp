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

#include <cstring>
#include <memory>
#include <vector>

// libFuzzer's own way to change bytes; not there where the corpus is only replayed.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most)
    __attribute__((weak));

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
    Mutation(Node *document, unsigned seed, const DocumentVocabulary &words)
        : root(document)
        , random(seed)
        , vocabulary(words)
    {
    }

    void change()
    {
        all.clear();
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

    QString name() { return oneOf(vocabulary.names); }

    // A value that fits often stands elsewhere in the document.
    QString value()
    {
        if (below(2) == 0)
            return oneOf(vocabulary.values);
        const Node *node = all.at(below(all.size()));
        if (node->attributes.isEmpty())
            return oneOf(vocabulary.values);
        return node->attributes.at(below(node->attributes.size())).second;
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
    const DocumentVocabulary &vocabulary;
    QVector<Node *> all; ///< As the last change found them.
};

} // namespace

static QByteArray mutatedDocument(const QByteArray &bytes, unsigned seed,
                                  const DocumentVocabulary &vocabulary)
{
    QXmlStreamReader reader(bytes);
    reader.setNamespaceProcessing(false);
    Node document;
    if (!readChildren(&reader, &document, 0))
        return QByteArray();

    Mutation mutation(&document, seed, vocabulary);
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

std::size_t mutateDocument(std::uint8_t *data, std::size_t size, std::size_t most, unsigned seed,
                           const DocumentVocabulary &vocabulary)
{
    if (LLVMFuzzerMutate && seed % 2 != 0)
        return LLVMFuzzerMutate(data, size, most);
    const QByteArray changed = mutatedDocument(
        QByteArray(reinterpret_cast<const char *>(data), int(size)), seed / 2, vocabulary);
    if (changed.isEmpty() || std::size_t(changed.size()) > most)
        return LLVMFuzzerMutate ? LLVMFuzzerMutate(data, size, most) : size;
    std::memcpy(data, changed.constData(), std::size_t(changed.size()));
    return std::size_t(changed.size());
}
