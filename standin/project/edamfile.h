// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "project/edamcontents.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Standin {

/// An EDAM file and the document in it.
struct EdamFileState
{
    QString path;      ///< Absolute; empty while there is no file.
    QString directory; ///< What relative paths are relative to, absolute.
    QByteArray head;   ///< The comment lines ahead of the document.
    QByteArray bytes;  ///< What the file held when it was last read or written.
    YamlNode root;

    /// Reads the file \a file.
    /// \return false if \a report has got an error.
    bool read(const QString &file, EdamReport *report);

    /// Writes \a changed to the file, whole or not at all, and makes it the document. Without a
    /// file it only does the latter. \return false with a sentence in \a error if it can't be
    /// written, or if the file no longer
    ///         holds what was read; everything is as it was then.
    bool write(const YamlNode &changed, QString *error);

    /// Names the file that the next write() makes or replaces, whatever it holds.
    void moveTo(const QString &file);
};

// Changes of a document. Aliases in it are expanded first, so that a change of one place changes no
// other; the operations that return a bool answer false if that is impossible.

/// Why they do.
QString sharedPartsError();

/// A document of the name \a name without files.
YamlNode newEdamDocument(const QString &name);

/// How the project in \a directory names the absolute path \a path: relative where that isn't
/// longer than a way through the root.
HOST_EXPORT QString nameInProject(const QString &path, const QString &directory);

/// The file type that stands for \a kind.
QString typeOfKind(FileKind kind);

/// Appends an entry for each of the files \a names, of the type that its suffix says.
HOST_EXPORT bool appendFiles(YamlNode *root, const QStringList &names);

/// Removes the entries at \a positions, ascending, of the files, and their names from the files
/// switched off.
HOST_EXPORT bool removeFiles(YamlNode *root, const QVector<int> &positions);

/// Puts the files in the order \a order, which holds each position once.
bool orderFiles(YamlNode *root, const QVector<int> &order);

/// Sets the value under \a key of the files at \a positions; a null node removes the key.
bool setFileValue(YamlNode *root, const QVector<int> &positions, const QString &key,
                  const YamlNode &value);

HOST_EXPORT bool setTops(YamlNode *root, const QStringList &tops);

/// Sets the option \a name below `tool_options: workbench:` to a string or a string list. An
/// invalid value, or an empty list, removes it.
HOST_EXPORT bool setToolOption(YamlNode *root, const QString &name, const QVariant &value);

/// Rewrites the paths in a document that moves from the directory \a from to \a to, so that they
/// name the same files: the relative ones, or with \a absoluteToo all, each in the form of
/// nameInProject().
HOST_EXPORT bool moveEdam(YamlNode *root, const QString &from, const QString &to, bool absoluteToo);

} // namespace Standin
