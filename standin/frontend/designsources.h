// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

namespace Standin {

/// A name and its value; the value may be empty.
struct Setting
{
    QString name;
    QString value;
};

struct SourceFile
{
    enum Language { Verilog, SystemVerilog, Vhdl, YosysNetlist };

    QString path;
    Language language = Verilog;
    QByteArray standard; ///< "1364-2001" and the like, for VHDL "93" and the like; may be empty.
    QString library;
    QVector<Setting> defines;
    QByteArray text; ///< Set by loadTexts().
};

/// The design information map as plain values.
struct DesignSources
{
    QString top;
    QVector<SourceFile> files;
    QStringList includePath;
    QVector<Setting> defines;
    QVector<Setting> parameters; ///< Values as Verilog literals.
    QVector<Setting> generics;   ///< Values as plain text.

    bool has(SourceFile::Language language) const;
};

/// Reads \a info, keys as in designinfo.h. Values of wrong types count as missing.
HOST_EXPORT DesignSources designSources(const QMap<QString, QVariant> &info);

/// The name of a Verilog standard as tools know it, or empty if \a text names none.
HOST_EXPORT QByteArray verilogStandard(const QString &text);

/// The two digits of a VHDL standard ("87", "93", "02", "08"); "08" if \a text names none.
HOST_EXPORT QByteArray vhdlStandard(const QString &text);

/// Reads all files, and takes those that can't be read out of \a sources. Only regular files of at
/// most \a longest bytes are read, and nothing blocks.
///
/// \param log receives an "ERROR" line for each file that can't be read.
/// \return true if all were read.
HOST_EXPORT bool loadTexts(DesignSources *sources, qint64 longest, QStringList *log);

/// Reads one file under the rules of loadTexts(). \return null, and the reason in \a error, if that
/// is not possible.
HOST_EXPORT QByteArray readRegularFile(const QString &path, qint64 longest, QString *error);

} // namespace Standin
