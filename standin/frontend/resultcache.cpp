// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/resultcache.h"

#include "frontend/toolbox.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace Standin {

static const char magic[] = "MOLK extraction 1\n";
static const int hashLength = 32;
static const char suffix[] = ".reading";

/// Longest artifact that is kept: reading a longer one again is no slower than the tool.
static const qint64 longestArtifact = qint64(256) << 20;

static QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

static QDataStream &operator<<(QDataStream &stream, const Setting &setting)
{
    return stream << setting.name << setting.value;
}

static QDataStream &operator<<(QDataStream &stream, const FileState &state)
{
    return stream << state.path << state.hash;
}

static QDataStream &operator>>(QDataStream &stream, FileState &state)
{
    return stream >> state.path >> state.hash;
}

/// The content of a source, or for a netlist, which may be very long, what changes with it.
static QByteArray contentOf(const SourceFile &file)
{
    if (file.language != SourceFile::YosysNetlist)
        return hashOf(file.text);
    return toolIdentity(file.path);
}

QByteArray readingKey(const DesignSources &sources, const FrontEnd &frontEnd, const ToolBox &tools)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << QByteArray(magic) << frontEnd.name() << frontEnd.identity(sources, tools)
           << sources.top << sources.includePath << sources.defines << sources.parameters
           << sources.generics;
    for (const SourceFile &file : sources.files)
        stream << file.path << int(file.language) << file.standard << file.library << file.defines
               << contentOf(file);
    return hashOf(bytes);
}

static QByteArray stateOf(const QString &path, qint64 longest)
{
    QString error;
    const QByteArray bytes = readRegularFile(path, longest, &error);
    return bytes.isNull() ? QByteArray() : hashOf(bytes);
}

QVector<FileState> fileStates(const QStringList &paths, qint64 longest)
{
    QVector<FileState> states;
    for (const QString &path : paths)
        states.append({path, stateOf(path, longest)});
    return states;
}

bool isCurrent(const KeptReading &reading, qint64 longest)
{
    return std::none_of(reading.absentFiles.begin(), reading.absentFiles.end(),
                        [](const QString &path) { return QFileInfo::exists(path); })
        && std::all_of(reading.dependencies.begin(), reading.dependencies.end(),
                       [&](const FileState &state) {
                           return !state.hash.isEmpty()
                               && stateOf(state.path, longest) == state.hash;
                       });
}

ResultCache::ResultCache(const QString &path, qint64 bytes)
    : directory(path)
    , maximum(bytes)
{
}

QString ResultCache::fileOf(const QByteArray &key) const
{
    return directory + '/' + QString::fromLatin1(key.toHex()) + suffix;
}

static bool isOurs(const QString &path, mode_t kind)
{
    struct stat status
    {
    };
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0
        && (status.st_mode & S_IFMT) == kind && status.st_uid == ::geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool ResultCache::isDirectoryOurs() const
{
    return maximum > 0 && isOurs(directory, S_IFDIR);
}

static QByteArray encode(const QByteArray &key, const KeptReading &reading,
                         const QByteArray &artifact)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << key << reading.lists.topModules << reading.lists.modules << reading.messages
           << reading.dependencies << reading.absentFiles << reading.artifact.top
           << reading.artifact.vhdlFiles << reading.artifact.sourceNames
           << !reading.artifact.file.isEmpty() << qint64(artifact.size()) << qCompress(artifact, 1);
    return bytes;
}

static bool decode(const QByteArray &body, const QByteArray &key, KeptReading *reading,
                   QByteArray *artifact, bool *hasArtifact)
{
    QDataStream stream(body);
    stream.setVersion(QDataStream::Qt_5_15);
    QByteArray keyInFile;
    QByteArray packed;
    qint64 length = 0;
    stream >> keyInFile >> reading->lists.topModules >> reading->lists.modules >> reading->messages
        >> reading->dependencies >> reading->absentFiles >> reading->artifact.top
        >> reading->artifact.vhdlFiles >> reading->artifact.sourceNames >> *hasArtifact >> length
        >> packed;
    if (stream.status() != QDataStream::Ok || !stream.atEnd() || keyInFile != key || length < 0
        || length > longestArtifact || packed.size() < 4)
        return false;
    // The packed bytes say themselves how much memory they want; that must be what was written.
    const auto *head = reinterpret_cast<const uchar *>(packed.constData());
    const qint64 said = qint64(head[0]) << 24 | head[1] << 16 | head[2] << 8 | head[3];
    if (said != length)
        return false;
    *artifact = qUncompress(packed);
    return artifact->size() == length;
}

bool ResultCache::find(const QByteArray &key, const QString &artifactFile,
                       KeptReading *reading) const
{
    const QString path = fileOf(key);
    if (!isDirectoryOurs() || !isOurs(path, S_IFREG))
        return false;
    QString error;
    const QByteArray bytes = readRegularFile(path, 2 * longestArtifact, &error);
    const int head = int(sizeof magic) - 1;
    if (!bytes.startsWith(magic) || bytes.size() < head + hashLength)
        return false;
    const QByteArray body = bytes.mid(head + hashLength);
    if (bytes.mid(head, hashLength) != hashOf(body))
        return false;

    KeptReading found;
    QByteArray artifact;
    bool hasArtifact = false;
    if (!decode(body, key, &found, &artifact, &hasArtifact))
        return false;
    if (hasArtifact) {
        QFile file(artifactFile);
        if (!file.open(QIODevice::WriteOnly) || file.write(artifact) != artifact.size()
            || !file.flush())
            return false;
        found.artifact.file = artifactFile;
    }
    *reading = found;

    // The time of change is the time of last use: it decides what goes first.
    QFile used(path);
    if (used.open(QIODevice::ReadWrite))
        used.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return true;
}

void ResultCache::store(const QByteArray &key, const KeptReading &reading) const
{
    if (maximum <= 0 || directory.isEmpty())
        return;
    QByteArray artifact("");
    if (!reading.artifact.file.isEmpty()) {
        QString error;
        artifact = readRegularFile(reading.artifact.file, longestArtifact, &error);
        if (artifact.isNull())
            return;
    }
    if (!QFileInfo::exists(directory)) {
        QDir().mkpath(directory);
        QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    if (!isDirectoryOurs())
        return;
    const QByteArray body = encode(key, reading, artifact);
    if (body.size() > maximum)
        return;
    QSaveFile file(fileOf(key));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(magic);
    file.write(hashOf(body));
    file.write(body);
    if (file.commit())
        removeOldest();
}

void ResultCache::removeOldest() const
{
    const QFileInfoList files =
        QDir(directory).entryInfoList({QString("*") + suffix}, QDir::Files, QDir::Time);
    qint64 total = 0;
    for (const QFileInfo &file : files) {
        total += file.size();
        if (total > maximum)
            QFile::remove(file.filePath());
    }
}

} // namespace Standin
