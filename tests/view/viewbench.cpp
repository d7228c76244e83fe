// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "viewbench.h"

#include "molkcore.h"
#include "molkfile.h"
#include "signalitems.h"

#include "netlist/netlistbuilder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace MOLK;

FATHOM::RtlNetlist *benchNetlist()
{
    Standin::NetlistBuilder builder("top");
    builder.addNet(0, "clk");
    builder.addNet(0, "rst", Standin::NoProbeIn);
    builder.addBus(0, "q", 3, 0);
    const int uart = builder.addLevel(0, "u0", "uart");
    builder.addNet(uart, "ready");
    return builder.build();
}

MolkCore *coreWatching(int id, const QString &name)
{
    auto *core = new MolkCore(id);
    core->getProbeIn(0)->setSignalNet({net(name)});
    return core;
}

ViewBench::ViewBench()
{
    host.serveDesign("top", benchNetlist);
}

QString ViewBench::path(const QString &name) const
{
    return QDir(dir.path()).filePath(name);
}

QString ViewBench::writeSkeleton(const QString &name) const
{
    return writeCores(0, name);
}

QString ViewBench::writeCores(int count, const QString &name) const
{
    QList<MolkCore *> cores;
    for (int i = 0; i < count; ++i)
        cores.append(coreWatching(i, "top/clk"));
    const QString file = path(name);
    if (!writeMOLKConfigToXml(cores, file))
        QTest::qFail(qPrintable("can't write " + file), __FILE__, __LINE__);
    qDeleteAll(cores);
    return file;
}

QString ViewBench::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        QTest::qFail(qPrintable("can't write " + file.fileName()), __FILE__, __LINE__);
    return file.fileName();
}

QByteArray ViewBench::read(const QString &file)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        QTest::qFail(qPrintable("can't read " + file), __FILE__, __LINE__);
    return opened.readAll();
}

std::unique_ptr<MolkView> ViewBench::openView(const QString &file) const
{
    auto view = std::make_unique<MolkView>();
    QString error;
    if (!view->open(file, QString(), &error)) {
        QTest::qFail(qPrintable("can't open " + file + ": " + error), __FILE__, __LINE__);
        return nullptr;
    }
    return view;
}

private_impl::MolkViewPrivate *documentOf(MolkView *view)
{
    return private_impl::MolkViewPrivate::get(view);
}

private_impl::MolkViewPrivate *documentOf(const std::unique_ptr<MolkView> &view)
{
    return documentOf(view.get());
}

QString shortTitle(const QWidget *view)
{
    return view->property("shortTitle").toString();
}
