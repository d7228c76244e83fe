// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "workbenchfixture.h"

#include "molkcore.h"
#include "molkfile.h"
#include "pictures.h"

#include "host/host.h"
#include "netlist/netlistbuilder.h"

#include "core/iview.h"

#include <QFile>
#include <QPushButton>
#include <QSettings>
#include <QTest>

WorkbenchFixture::WorkbenchFixture()
{
    QCoreApplication::setOrganizationName("molk-tests");
    QCoreApplication::setApplicationName("workbench");
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.filePath("settings"));
    Workbench::initPictures();
}

bool WorkbenchFixture::start()
{
    Workbench::CommandLine line;
    line.plugin = MOLK_PLUGIN_FILE;
    QString error;
    if (!runtime.start(line, &error)) {
        qWarning("%s", qPrintable(error));
        return false;
    }
    runtime.services().extraction().serveTop("chip", [] {
        Standin::NetlistBuilder builder("chip");
        builder.addNet(0, "clk");
        builder.addBus(0, "q", 7, 0);
        return builder.build();
    });
    window()->show();
    return QTest::qWaitForWindowActive(window());
}

QString WorkbenchFixture::makeFile(const QString &name, const QByteArray &content)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(name));
    return file.fileName();
}

QString WorkbenchFixture::makeConfiguration(const QString &name)
{
    MOLK::MolkCore core(0);
    MOLK::SignalItem clock;
    clock.name = "chip/clk";
    clock.kind = 0;
    core.getProbeIn(0)->setSignalNet({clock});
    if (!MOLK::writeMOLKConfigToXml({&core}, path(name)))
        qFatal("can't write %s", qPrintable(name));
    return path(name);
}

QString WorkbenchFixture::makeProject(const QString &name, const QStringList &configurations)
{
    makeFile("chip.v", "module chip(input clk);\nendmodule\n");
    QByteArray text = "name: " + QByteArray(name.toUtf8()).replace(".eda.yml", "")
        + "\ntoplevel: chip\nfiles:\n  - name: chip.v\n    file_type: verilogSource\n";
    for (const QString &configuration : configurations)
        text += "  - name: " + configuration.toUtf8() + "\n    file_type: user\n";
    return makeFile(name, text);
}

QAction *WorkbenchFixture::action(const QString &text)
{
    const auto actions = window()->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

QString WorkbenchFixture::saveText()
{
    return runtime.services().proxyAction("Core.Action.Save")->text();
}

void WorkbenchFixture::modify()
{
    auto *add = documents()->activeView()->findChild<QPushButton *>("btnProbeInAdd");
    QTest::mouseClick(add, Qt::LeftButton);
}

void WorkbenchFixture::reset()
{
    documents()->dropAllViews();
    window()->closeProject();
    QSettings().clear();
}
