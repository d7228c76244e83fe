// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "savebench.h"

#include "modaldriver.h"
#include "molkcore.h"
#include "molkfile.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QPushButton>
#include <QTest>

using namespace MOLK;

SaveBench::SaveBench(const QString &name)
    : file(bench.path("d/" + name))
{
    QDir().mkdir(directory());
    QList<SignalItem> items;
    for (int i = 0; i < 3000; ++i) {
        items.append(SignalItem());
        items.last().name = QString("top/u_core/net_%1").arg(i);
    }
    MolkCore core(0);
    core.getProbeIn(0)->setSignalNet(items);
    if (!writeMOLKConfigToXml({&core}, file))
        QTest::qFail("can't write the file to start with", __FILE__, __LINE__);
    before = ViewBench::read(file);
}

void SaveBench::open()
{
    view = bench.openView(file);
    edit();
}

void SaveBench::edit()
{
    child<QPushButton>(view, "btnProbeInAdd")->click();
}

QByteArray SaveBench::newBytes() const
{
    // A save works the same anywhere.
    const QString elsewhere = bench.path("elsewhere.molk");
    const QList<MolkCore *> cores = documentOf(view)->cores;
    for (MolkCore *core : cores)
        core->setModuleName("top");
    if (!writeMOLKConfigToXml(cores, elsewhere))
        return QByteArray();
    const QByteArray bytes = ViewBench::read(elsewhere);
    QFile::remove(elsewhere);
    return bytes;
}

bool SaveBench::save()
{
    ModalDriver driver;
    const QString text = "Can not save to " + QDir::toNativeSeparators(file);
    driver.expectMessage("Error", text, QMessageBox::Ok);
    const bool saved = view->save();
    // A message that came is one that isn't expected any more.
    if (saved == driver.done())
        QTest::qFail("the message and the result don't fit", __FILE__, __LINE__);
    driver.forget();
    return saved;
}

static QString shortened(const QByteArray &bytes)
{
    return QString("%1 bytes, \"%2\"").arg(bytes.size()).arg(QString::fromUtf8(bytes.left(40)));
}

QString SaveBench::faultAfter(bool saved) const
{
    QFile written(file);
    const QByteArray bytes = written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    const QByteArray wanted = saved ? newBytes() : before;
    if (bytes != wanted)
        return "the file holds " + shortened(bytes);
    const QString name = QFileInfo(file).fileName();
    const QStringList entries =
        QDir(directory())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    if (entries != QStringList(name))
        return "the directory holds " + entries.join(", ");
    if (view->isModified() == saved || view->windowTitle() != (saved ? name : name + " *"))
        return "the star is wrong: " + view->windowTitle();
    if (documentOf(view)->watcher->files() != QStringList(file))
        return "the file isn't watched";
    return QString();
}

QString SaveBench::faultOfWatch()
{
    QFile outside(file);
    if (!outside.open(QIODevice::Append) || outside.write("\n") != 1)
        return "the file can't be changed";
    outside.close();
    // What follows the first sign takes half a second, and has tests of its own.
    auto *document = documentOf(view);
    if (!QTest::qWaitFor([document] { return document->reloadPending; }))
        return "the change isn't noticed";
    document->reloadPending = false;
    return QString();
}
