// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/designsources.h"
#include "frontend/includemasks.h"
#include "frontend/toollog.h"

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Standin {

class DirectoryFarm;
class Progress;
class ToolBox;

/// How a source is changed that would swallow those behind it.
struct SourceMend
{
    int rounds = 0;
    QSet<int> emptyLines; ///< Numbers of lines, from 1.
    QByteArray tail;      ///< Comes behind the text.
    bool isLeftOut = false;
};

/// In which way Verilog files are read.
struct VerilogVariant
{
    bool definesVerilator = false;
    QVector<QByteArray> keywords; ///< Of each source: a standard for `begin_keywords, or empty.
    QHash<int, SourceMend> mends; ///< By source.
};

/// All Verilog sources as one text without macros and comments.
struct PreprocessedText
{
    bool complete = false; ///< No error; else log says what is wrong and the rest is what there is.
    QByteArray text;
    DesignGraph graph;
    QStringList log;
    QVector<ToolMessage> messages; ///< The tool's, which the log has too.
    QStringList included;          ///< Real paths of the included files.

    /// Where lines were made longer since: by "file:line" the columns from 0, in order, and by how
    /// much.
    QHash<QString, QVector<QPair<int, int>>> widened;
};

/// Runs the preprocessor over the Verilog files of a design, in their private directory.
class HOST_EXPORT VerilogPreprocessor
{
public:
    /// The arguments must outlive the preprocessor.
    VerilogPreprocessor(const DesignSources &sources, DirectoryFarm &farm, ToolBox &tools,
                        Progress &progress);

    PreprocessedText run(const VerilogVariant &variant);

    /// Looks in the messages of a run for a source that didn't end what it began, so that what
    /// stands behind it is missing, and changes \a variant so that it does.
    ///
    /// \return the index of the source; -1 if there is none. After some rounds a source is left
    /// out.
    int mend(const QVector<ToolMessage> &messages, VerilogVariant *variant) const;

    /// Private name of the source \a index; empty for VHDL.
    QString privateName(int index) const { return names.at(index); }

private:
    QStringList arguments(const VerilogVariant &variant) const;
    QByteArray copyOf(int index, const VerilogVariant &variant);

    const DesignSources &sources;
    DirectoryFarm &farm;
    ToolBox &tools;
    Progress &progress;
    IncludeMasks includes;
    QStringList names;
    QStringList includeNames;
    QStringList missingDirectories;
};

/// Real paths of the files that preprocessed text came from, the sources themselves left out.
HOST_EXPORT QStringList includedFiles(const QByteArray &preprocessed, const DirectoryFarm &farm);

/// An `include directive with a plain name.
struct IncludeDirective
{
    QString name;
    int begin; ///< Offset of the name in the text.
    int end;   ///< Offset behind it.
};

/// The `include directives of a source text, in order.
HOST_EXPORT QVector<IncludeDirective> includeDirectives(const QByteArray &source);

} // namespace Standin
