// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "project/edamproject.h"
#include "project/yamldocument.h"

#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace Standin {

/// One entry of `files`.
struct EdamFile
{
    QString name; ///< The path as the project file has it.
    QString path; ///< Absolute and clean.
    QString fileType;
    FileKind kind = OtherKind;
    QString standard; ///< What follows the dash in the file type; empty if nothing does.
    QString library;  ///< VHDL library; empty if none is named.
    bool isInclude = false;
    QString includeDirectory; ///< Of an include file: where `include finds it, absolute.
    QVariantMap defines;      ///< Macro names and their values as texts, for this file alone.
    bool enabled = true;
};

/// What an EDAM document says, as far as the host uses it.
struct EdamContents
{
    QString name;
    QStringList tops;
    QList<EdamFile> files;
    QVariantMap defines;    ///< Macro names and their values as texts.
    QVariantMap parameters; ///< Of the top module: bool, qlonglong, double or QString.
    QVariantMap generics;   ///< Of the top entity, likewise.
    QVariantMap options;    ///< Project options: QString or QStringList.
};

/// One thing that is wrong or odd with a document.
struct EdamFinding
{
    int line = 0; ///< Counted from 1; 0 if it is nowhere in particular.
    QString text; ///< Such as "files[3].name: is missing".
};

struct EdamReport
{
    QList<EdamFinding> errors;
    QList<EdamFinding> warnings;
};

/// The key below `tool_options: workbench:` that lists the files that are switched off.
constexpr char disabledFilesKey[] = "disabled_files";

/// The kind that a file type stands for.
FileKind kindOfType(const QString &fileType);

/// The file type of a file of the name \a path, by its suffix.
QString fileTypeOf(const QString &path);

/// Whether a file of the name \a path is one that others include, by its suffix.
bool isIncludeName(const QString &path);

/// Reads what \a root says. Relative paths are relative to \a directory, which is absolute.
/// \return false if \a report has got errors; \a contents then holds what could be read.
HOST_EXPORT bool readEdam(const YamlNode &root, const QString &directory, EdamContents *contents,
                          EdamReport *report);

/// The design information map, with the keys of designinfo.h.
HOST_EXPORT QMap<QString, QVariant> designInfo(const EdamContents &contents,
                                               const QString &directory);

} // namespace Standin
