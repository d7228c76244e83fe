// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "project/edamfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace Standin {

// More than any project has, and little enough to be read at once.
static const qint64 mostBytes = qint64(64) << 20;

static QByteArray leadingComments(const QByteArray &bytes)
{
    QByteArray comments;
    int begin = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (begin < bytes.size() && bytes.at(begin) == '#') {
        int end = bytes.indexOf('\n', begin);
        if (end < 0)
            end = bytes.size();
        QByteArray line = bytes.mid(begin, end - begin);
        if (line.endsWith('\r'))
            line.chop(1);
        comments += line + "\n";
        begin = end + 1;
    }
    return comments;
}

// \return why the file can't be read; empty if it could.
static QString readBytes(const QString &path, QByteArray *bytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        return "the file does not exist";
    // A pipe or a device would block, or never end.
    if (!info.isFile())
        return "it is not a regular file";
    if (info.size() > mostBytes)
        return "the file is too large";

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "the file cannot be read: " + file.errorString();
    *bytes = file.read(mostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return "the file cannot be read: " + file.errorString();
    return bytes->size() > mostBytes ? QString("the file is too large") : QString();
}

bool EdamFileState::read(const QString &file, EdamReport *report)
{
    moveTo(QDir::cleanPath(QFileInfo(file).absoluteFilePath()));
    const QString fault = readBytes(path, &bytes);
    if (!fault.isEmpty()) {
        report->errors.append({0, fault});
        return false;
    }

    YamlError error;
    if (!readYaml(bytes, &root, &error)) {
        report->errors.append({error.line, error.text});
        return false;
    }
    head = leadingComments(bytes);
    return true;
}

bool EdamFileState::write(const YamlNode &changed, QString *error)
{
    if (path.isEmpty()) {
        root = changed;
        return true;
    }

    const QString native = QDir::toNativeSeparators(path);
    QByteArray found;
    if (!bytes.isNull() && (!readBytes(path, &found).isEmpty() || found != bytes)) {
        *error = "The project file " + native
            + " has been changed by another program. Open it again first.";
        return false;
    }

    const QByteArray document = writeYaml(changed);
    if (document.isNull()) {
        *error = "The project file " + native + " holds what cannot be written without loss.";
        return false;
    }
    const QByteArray text = head + document;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        *error = "Cannot write the project file " + native + ": " + file.errorString() + ".";
        return false;
    }
    bytes = text;
    root = changed;
    return true;
}

void EdamFileState::moveTo(const QString &file)
{
    path = file;
    directory = QFileInfo(file).absolutePath();
    bytes = QByteArray();
}

} // namespace Standin
