// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/includemasks.h"

#include "frontend/designsources.h"
#include "frontend/directoryfarm.h"
#include "frontend/verilogmacros.h"
#include "frontend/verilogpreprocessor.h"
#include "frontend/verilogtext.h"

#include <QDir>
#include <QFileInfo>

namespace Standin {

// Deeper than that tools don't include either.
static constexpr int MaximumDepth = 64;

QByteArray maskedVerilog(const QByteArray &source)
{
    return withJoinedArguments(maskVerilogPragmas(maskForeignDirectives(source)));
}

IncludeMasks::IncludeMasks(const QStringList &includePath, qint64 longestFile,
                           DirectoryFarm &privateFarm)
    : searched(includePath)
    , longest(longestFile)
    , farm(privateFarm)
{
}

QString IncludeMasks::resolve(const QString &name, const QString &directory) const
{
    const QStringList places = QStringList(directory) + searched;
    for (const QString &place : places) {
        const QString path = QDir(place).absoluteFilePath(name);
        if (QFileInfo(path).isFile())
            return path;
    }
    return QString();
}

QByteArray IncludeMasks::copyOf(const QString &path)
{
    const auto known = copies.constFind(path);
    if (known != copies.constEnd() || depth == MaximumDepth)
        return known == copies.constEnd() ? QByteArray() : *known;
    // That is what a file finds that includes itself.
    copies.insert(path, QByteArray());
    QString error;
    const QByteArray text = readRegularFile(path, longest, &error);
    ++depth;
    const QByteArray masked = led(maskedVerilog(text), QFileInfo(path).absolutePath());
    --depth;
    if (masked == text)
        return QByteArray();
    const QString name = farm.addIncludedCopy(path);
    const QByteArray copy = name.section('/', 1).toUtf8();
    farm.write(QString::fromUtf8(copy), "`line 1 \"" + name.toUtf8() + "\" 0\n" + masked + '\n');
    copies.insert(path, copy);
    return copy;
}

QByteArray IncludeMasks::led(const QByteArray &text, const QString &directory)
{
    const QVector<IncludeDirective> directives = includeDirectives(text);
    QByteArray result;
    int done = 0;
    for (const IncludeDirective &directive : directives) {
        const QString path = resolve(directive.name, directory);
        const QByteArray copy = path.isNull() ? QByteArray() : copyOf(path);
        if (copy.isEmpty())
            continue;
        result += text.mid(done, directive.begin - done) + copy;
        done = directive.end;
    }
    return done == 0 ? text : result + text.mid(done);
}

} // namespace Standin
