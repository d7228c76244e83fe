// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectfixture.h"

#include "designinfo.h"

#include "qutil/eventmanager.h"
#include "qutil/ievent.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using Standin::EdamProject;

EventList::EventList()
{
    for (const QString &name : QStringList{"TE.File.Add", "TE.File.Remove", "TE.File.Change.Enable",
                                           "TE.File.Change.Type", "TE.File.Modified",
                                           "TE.Option.Change", "TE.Device.Change"})
        QUtil::EventManager::instance()->subscribe(this, name);
}

EventList::~EventList()
{
    QUtil::EventManager::instance()->unsubscribeAll(this);
}

void EventList::handleIEvent(const QUtil::IEvent *event)
{
    QString line = event->type();
    for (const QString &key : QStringList{"file", "enable", "type", "previous", "option"}) {
        if (event->get(key).isValid())
            line += " " + key + "=" + event->get(key).toString();
    }
    lines.append(line);
    if (project)
        filesAtEvent = project->files().size();
}

ProjectFixture::ProjectFixture()
{
    if (!directory.isValid())
        QTest::qFail("there is no folder for the project", __FILE__, __LINE__);
}

QString ProjectFixture::write(const QByteArray &text)
{
    const QString path = in("x.eda.yml");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        QTest::qFail("the project file can't be written", __FILE__, __LINE__);
    return path;
}

std::unique_ptr<EdamProject> ProjectFixture::open(const QByteArray &text)
{
    QStringList errors;
    QStringList warnings;
    std::unique_ptr<EdamProject> project = EdamProject::open(write(text), &errors, &warnings);
    if (!project || !errors.isEmpty() || !warnings.isEmpty()) {
        QTest::qFail(qPrintable((errors + warnings).join('\n')), __FILE__, __LINE__);
        return EdamProject::adHoc({}, QString());
    }
    return project;
}

QByteArray ProjectFixture::read() const
{
    QFile file(in("x.eda.yml"));
    if (!file.open(QIODevice::ReadOnly))
        QTest::qFail("the project file can't be read", __FILE__, __LINE__);
    return file.readAll();
}

QString ProjectFixture::touch(const QString &name)
{
    const QString path = in(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        QTest::qFail("a source file can't be written", __FILE__, __LINE__);
    return path;
}

QStringList pathsIn(const QMap<QString, QVariant> &designInfo)
{
    QStringList paths;
    const QVariantList files = designInfo.value(Standin::DesignInfo::Files).toList();
    for (const QVariant &file : files)
        paths.append(file.toMap().value(Standin::DesignInfo::Path).toString());
    return paths;
}
