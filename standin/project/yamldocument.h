// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace Standin {

/// A node of a YAML document as its author wrote it: keys in their order, repeated keys included,
/// quotes told from plain text, aliases not followed. A value.
struct HOST_EXPORT YamlNode
{
    enum Kind { Null, Scalar, Sequence, Map, Alias };

    Kind kind = Null;
    int line = 0;        ///< Where it begins, counted from 1; 0 if it wasn't read from a file.
    QString text;        ///< Of a scalar.
    bool quoted = false; ///< The scalar is a string, whatever it looks like.
    bool flow = false;   ///< The sequence or map is written in brackets.
    QString tag;         ///< An explicit tag; empty without one.
    int anchor = 0; ///< Number of the anchor here, or of the one that the alias names; 0 for none.

    /// Elements of a sequence; keys and values of a map in turns.
    std::vector<YamlNode> items;

    /// A string. It gets quotes where it would read as something else without them.
    static YamlNode string(const QString &text);

    /// A plain text that is no string: a number or `true`.
    static YamlNode plain(const QString &text);

    static YamlNode sequence();
    static YamlNode map();

    /// The value under \a key of a map, the first one if the key is repeated; null if there is
    /// none, or if this is no map.
    const YamlNode *value(const QString &key) const;
    YamlNode *value(const QString &key);

    /// Replaces the value under \a key, or appends the key.
    void setValue(const QString &key, const YamlNode &node);

    /// Removes \a key and its value, if it is there.
    void removeKey(const QString &key);
};

/// Where and why a document can't be read.
struct YamlError
{
    int line = 0; ///< Counted from 1; 0 if it is nowhere in particular.
    QString text; ///< A sentence without a full stop.
};

/// Reads the one YAML document in \a bytes, UTF-8 with or without a byte order mark.
///
/// Nesting is bounded, and aliases aren't expanded, so that the result is never larger than the
/// text. Nothing is ever constructed from tags.
/// \param root stays as it is on failure.
HOST_EXPORT bool readYaml(const QByteArray &bytes, YamlNode *root, YamlError *error);

/// Whether \a b says the same as \a a, of which it is a copy that was written and read. A plain
/// text may have got quotes, if nobody can take it for a number or a word of YAML.
HOST_EXPORT bool isFaithful(const YamlNode &a, const YamlNode &b);

/// The document in UTF-8 with LF, which reads back as the same values in the same order. Anchors
/// get new names. \return null if the emitter finds no text for \a root that does. Ordinary
/// documents all have one.
HOST_EXPORT QByteArray writeYaml(const YamlNode &root);

/// Puts a copy of what it stands for in the place of each alias.
/// \return false, and \a root as it was, if an anchor contains itself or if the result would have
/// more
///         than a million nodes.
HOST_EXPORT bool expandAliases(YamlNode *root);

} // namespace Standin
