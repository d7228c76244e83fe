// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/designgraph.h"
#include "frontend/designsources.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace Standin {

class DirectoryFarm;
class Progress;
class ToolBox;

/// In which way Verilog files are read.
struct VerilogVariant
{
    bool definesVerilator = false;
    QVector<QByteArray> keywords; ///< Of each source: a standard for `begin_keywords, or empty.
};

/// All Verilog sources as one text without macros and comments.
struct PreprocessedText
{
    bool complete = false; ///< No error; else log says what is wrong and the rest is what there is.
    QByteArray text;
    DesignGraph graph;
    QStringList log;
    QStringList included; ///< Real paths of the included files.
};

/// Runs the preprocessor over the Verilog files of a design, in their private directory.
class HOST_EXPORT VerilogPreprocessor
{
public:
    /// The arguments must outlive the preprocessor.
    VerilogPreprocessor(const DesignSources &sources, DirectoryFarm &farm, ToolBox &tools,
                        Progress &progress);

    PreprocessedText run(const VerilogVariant &variant);

    /// Private name of the source \a index; empty for VHDL.
    QString privateName(int index) const { return names.at(index); }

private:
    QStringList arguments(const VerilogVariant &variant) const;
    QByteArray copyOf(int index, const VerilogVariant &variant) const;

    const DesignSources &sources;
    DirectoryFarm &farm;
    ToolBox &tools;
    Progress &progress;
    QStringList names;
    QStringList includeNames;
    QStringList missingDirectories;
};

/// Real paths of the files that preprocessed text came from, the sources themselves left out.
HOST_EXPORT QStringList includedFiles(const QByteArray &preprocessed, const DirectoryFarm &farm);

/// The names in the `include directives of a source text, as written.
HOST_EXPORT QStringList includeDirectives(const QByteArray &source);

} // namespace Standin
