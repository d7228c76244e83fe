// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/designsources.h"

#include "frontend/toollog.h"

#include "designinfo.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Standin {

bool DesignSources::has(SourceFile::Language language) const
{
    return std::any_of(files.begin(), files.end(),
                       [&](const SourceFile &file) { return file.language == language; });
}

static QString textOf(const QVariantMap &map, QLatin1String key)
{
    return map.value(key).toString();
}

static SourceFile::Language languageOf(const QString &path, int type)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "json")
        return SourceFile::YosysNetlist;
    switch (type) {
    case 2:
        return SourceFile::Verilog;
    case 3:
        return SourceFile::SystemVerilog;
    case 4:
        return SourceFile::Vhdl;
    default:
        break;
    }
    if (suffix == "vhd" || suffix == "vhdl")
        return SourceFile::Vhdl;
    return suffix == "sv" || suffix == "svh" ? SourceFile::SystemVerilog : SourceFile::Verilog;
}

/// True for names that a tool's command line takes for nothing else.
static bool isMacroName(const QString &name)
{
    static const QRegularExpression shape("\\A[A-Za-z_][A-Za-z0-9_$]*\\z");
    return shape.match(name).hasMatch();
}

static QString plainValue(const QVariant &value)
{
    if (value.type() == QVariant::Bool)
        return value.toBool() ? "1" : "0";
    return value.toString().replace('\n', ' ').remove('\r');
}

static QString verilogLiteral(const QVariant &value)
{
    static const QRegularExpression number(
        "\\A[-+]?([0-9][0-9_]*(\\.[0-9]+)?|[0-9]*'[sS]?[bodhBODH][0-9a-fA-FxzXZ_?]+)\\z");
    const QString text = plainValue(value);
    if (number.match(text).hasMatch())
        return text;
    QString quoted = text;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + quoted + '"';
}

static QVector<Setting> settings(const QVariant &value, QString (*write)(const QVariant &))
{
    QVector<Setting> list;
    const QVariantMap map = value.toMap();
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (isMacroName(it.key()))
            list.append({it.key(), write(it.value())});
    }
    return list;
}

static SourceFile sourceFile(const QVariantMap &entry, const QString &projectStandard)
{
    SourceFile file;
    file.path = textOf(entry, DesignInfo::Path);
    file.language = languageOf(file.path, entry.value(DesignInfo::Type).toInt());
    file.library = textOf(entry, DesignInfo::Library);
    file.defines = settings(entry.value(DesignInfo::Defines), plainValue);
    const QString own = textOf(entry, DesignInfo::Standard);
    if (file.language == SourceFile::Vhdl)
        file.standard = vhdlStandard(own);
    else
        file.standard = verilogStandard(own.isEmpty() ? projectStandard : own);
    // A project's "Verilog 2001" is meant for its Verilog files.
    if (file.language == SourceFile::SystemVerilog && file.standard.startsWith("1364"))
        file.standard.clear();
    return file;
}

DesignSources designSources(const QMap<QString, QVariant> &info)
{
    DesignSources sources;
    sources.top = textOf(info, DesignInfo::Top);
    sources.includePath = info.value(DesignInfo::IncludePath).toStringList();
    sources.defines = settings(info.value(DesignInfo::Defines), plainValue);
    sources.parameters = settings(info.value(DesignInfo::Parameters), verilogLiteral);
    sources.generics = settings(info.value(DesignInfo::Generics), plainValue);
    const QString standard = textOf(info, DesignInfo::VerilogStandard);
    const QVariantList files = info.value(DesignInfo::Files).toList();
    for (const QVariant &entry : files)
        sources.files.append(sourceFile(entry.toMap(), standard));
    return sources;
}

QByteArray verilogStandard(const QString &text)
{
    static const QMap<QString, QByteArray> years = {
        {"95", "1364-1995"},   {"1995", "1364-1995"}, {"01", "1364-2001"},   {"2001", "1364-2001"},
        {"2009", "1800-2009"}, {"09", "1800-2009"},   {"2012", "1800-2012"}, {"12", "1800-2012"},
        {"2017", "1800-2017"}, {"17", "1800-2017"},
    };
    static const QRegularExpression shape("(?:\\A|[^0-9])([0-9]{4}|[0-9]{2})\\z");
    const QRegularExpressionMatch match = shape.match(text.trimmed());
    if (!match.hasMatch())
        return QByteArray();
    const QString year = match.captured(1);
    // Only 2005 is a year of both languages.
    if (year == "2005" || year == "05")
        return text.contains("1800") || text.contains("system", Qt::CaseInsensitive)
                || text.startsWith("sv", Qt::CaseInsensitive)
            ? "1800-2005"
            : "1364-2005";
    return years.value(year);
}

QByteArray vhdlStandard(const QString &text)
{
    static const QRegularExpression shape("(?:\\A|[^0-9])(?:19|20)?(87|93|00|02|08)\\z");
    const QRegularExpressionMatch match = shape.match(text.trimmed());
    const QString digits = match.hasMatch() ? match.captured(1) : QString("08");
    return digits == "00" ? "02" : digits.toLatin1();
}

static QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

QByteArray readRegularFile(const QString &path, qint64 longest, QString *error)
{
    // A path with a null character names another file to the system than to us.
    if (path.contains(QChar('\0'))) {
        *error = "the path is not valid";
        return QByteArray();
    }
    // Opening a pipe for reading waits for its writer unless told not to.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        *error = systemError();
        return QByteArray();
    }
    struct stat status
    {
    };
    QFile file;
    QByteArray bytes;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        *error = "not a regular file";
    } else if (qint64(status.st_size) > longest) {
        *error = QString("the file is longer than %1 MB").arg(longest >> 20);
    } else if (!file.open(descriptor, QIODevice::ReadOnly)) {
        *error = file.errorString();
    } else {
        // A read sets aside all that it asks for, so it asks for what there is.
        bytes = file.read(status.st_size);
        if (status.st_size == 0)
            bytes = QByteArray("");
        else if (bytes.isNull())
            *error = file.errorString();
    }
    ::close(descriptor);
    return bytes;
}

bool loadTexts(DesignSources *sources, qint64 longest, QStringList *log)
{
    // All texts together are held at once, so they are limited together as well.
    qint64 left = 8 * longest;
    QVector<SourceFile> loaded;
    for (SourceFile &file : sources->files) {
        // A netlist may be very long, so its reader takes it from the disk itself.
        if (file.language == SourceFile::YosysNetlist && QFileInfo(file.path).isFile()) {
            loaded.append(file);
            continue;
        }
        QString error = "the entry has no path";
        if (!file.path.isEmpty())
            file.text = readRegularFile(file.path, std::min(longest, left), &error);
        left -= file.text.size();
        if (!file.text.isNull()) {
            loaded.append(file);
            continue;
        }
        const QString name = file.path.isEmpty() ? QString("source file") : file.path;
        log->append("ERROR: " + printable(name) + ": " + error);
    }
    const bool complete = loaded.size() == sources->files.size();
    sources->files = loaded;
    return complete;
}

} // namespace Standin
