// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkfile.h"

#include "messagetext.h"
#include "molkcore.h"
#include "molkfilereader.h"
#include "molkfilewriter.h"
#include "plainfile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <unistd.h>

namespace MOLK {

// A chain of links longer than the system follows is taken for a circle.
static const int maximumLinks = 40;

namespace {

// A file as it is when it is opened. What somebody appends while it is read isn't read any more, or
// the reading would take as long as the writing.
class StillFile : public QFile
{
public:
    using QFile::QFile;

    void holdStill() { end = size(); }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        return QFile::readData(data, qBound<qint64>(0, end - pos(), maximum));
    }

private:
    qint64 end = 0;
};

} // namespace

// The one way in: what the check accepts is exactly what can be read. Returns the cause of a
// failure, empty on success.
static QString readFile(const QString &fileName, QList<MolkCore *> *cores)
{
    StillFile file(fileName);
    QString cause = openPlainFile(&file);
    if (cause.isEmpty()) {
        file.holdStill();
        cause = readDocument(&file, cores);
    }
    return file.error() == QFileDevice::NoError ? cause : file.errorString();
}

// QSaveFile itself follows one link only, and would put the file in the place of a second one.
static QString linkTarget(const QString &fileName)
{
    QString target = fileName;
    for (int i = 0; i < maximumLinks; ++i) {
        const QFileInfo info(target);
        if (!info.isSymLink())
            return target;
        target = info.symLinkTarget();
    }
    return QString();
}

// QSaveFile asks for this as well, but lets it fail: a disk or a quota that is full may be told of
// only here.
static bool isStored(QSaveFile *file)
{
    if (::fsync(file->handle()) == 0)
        return true;
    // Not every file system can tell.
    return errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
}

bool checkMOLKFile(const QString &fileName)
{
    QList<MolkCore *> cores;
    const bool isReadable = readFile(fileName, &cores).isEmpty();
    qDeleteAll(cores);
    return isReadable;
}

QList<MolkCore *> readMOLKConfigFromXml(const QString &fileName, bool *ok, QString *errorMessage)
{
    QList<MolkCore *> cores;
    const QString cause = readFile(fileName, &cores);
    if (!cause.isEmpty() && errorMessage) {
        const QString name = QFileInfo(fileName).fileName();
        *errorMessage = quotedWord(QStringRef(&name)) + ": " + cause + '.';
    }
    if (cause.isEmpty() && ok)
        *ok = true;
    return cores;
}

bool writeMOLKConfigToXml(const QList<MolkCore *> &cores, const QString &fileName)
{
    if (!isUsableFileName(fileName))
        return false;
    const QString target = linkTarget(fileName);
    if (target.isEmpty())
        return false;
    // Replacing a device or a pipe by a file would take it from everyone else.
    const QFileInfo info(target);
    if (info.exists() && !info.isFile())
        return false;

    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    MolkFileWriter writer(&file);
    if (writer.write(cores) && file.flush() && isStored(&file))
        return file.commit();
    file.cancelWriting();
    return false;
}

} // namespace MOLK
