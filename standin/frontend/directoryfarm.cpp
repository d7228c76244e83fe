// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/directoryfarm.h"

#include "frontend/designsources.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <unistd.h>

namespace Standin {

/// Each line of it is looked at while the application waits.
static constexpr qint64 LongestLog = qint64(16) << 20;

static QString numbered(QChar letter, int number)
{
    return letter + QString::number(number).rightJustified(4, '0');
}

DirectoryFarm::DirectoryFarm()
    : directory(QDir::tempPath() + "/molk-extraction-XXXXXX")
{
}

bool DirectoryFarm::link(const QString &target, const QString &name) const
{
    return ::symlink(QFile::encodeName(target).constData(),
                     QFile::encodeName(filePath(name)).constData())
        == 0;
}

QString DirectoryFarm::addSource(const QString &path, const QString &suffix)
{
    const QString real = QFileInfo(path).absolutePath();
    QString &name = sourceDirectories[real];
    if (name.isEmpty()) {
        name = numbered('d', sourceDirectories.size());
        link(real, name);
        links.insert(name, real);
    }
    const QString copy = numbered('s', sources.size() + 1) + suffix;
    const QString source = name + '/' + copy;
    copies.insert(copy, path);
    sources.insert(source, path);
    return source;
}

QString DirectoryFarm::addIncludedCopy(const QString &path)
{
    const QString name = addSource(path, "__molk.vh");
    includedCopies.insert(name);
    return name;
}

QString DirectoryFarm::addIncludeDirectory(const QString &path)
{
    if (path.isEmpty() || !QFileInfo(path).isDir())
        return QString();
    const QString real = QFileInfo(path).absoluteFilePath();
    const QString name = numbered('i', includeDirectories.size() + 1);
    if (!link(real, name))
        return QString();
    includeDirectories.append(real);
    links.insert(name, real);
    return name;
}

bool DirectoryFarm::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QByteArray DirectoryFarm::read(const QString &name, qint64 longest) const
{
    QString error;
    return readRegularFile(filePath(name), longest, &error);
}

QByteArray DirectoryFarm::readLog(const QString &name) const
{
    QFile file(filePath(name));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    QByteArray text = file.read(std::min(file.size(), LongestLog));
    if (text.size() < file.size())
        text.truncate(text.lastIndexOf('\n') + 1);
    return text;
}

QString DirectoryFarm::realPath(const QString &name) const
{
    const auto source = sources.constFind(name);
    if (source != sources.constEnd())
        return source.value();
    const auto copy = copies.constFind(name);
    if (copy != copies.constEnd())
        return copy.value();
    const int slash = name.indexOf('/');
    const auto link = links.constFind(name.left(slash));
    if (slash < 0 || link == links.constEnd())
        return name.startsWith('/') ? QDir::cleanPath(name) : QString();
    return QDir::cleanPath(link.value() + name.mid(slash));
}

QStringList DirectoryFarm::searchedDirectories() const
{
    QStringList names = sourceDirectories.values();
    std::sort(names.begin(), names.end());
    QStringList directories;
    for (const QString &name : qAsConst(names))
        directories.append(links.value(name));
    return directories + includeDirectories;
}

} // namespace Standin
