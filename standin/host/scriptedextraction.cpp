// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/scriptedextraction.h"

#include "fathom/rtlnetlist.h"

#include <QEventLoop>
#include <QTimer>

namespace Standin {

ScriptedExtraction::ScriptedExtraction() = default;

ScriptedExtraction::~ScriptedExtraction()
{
    clear();
}

void ScriptedExtraction::serve(const ModulesAnswer &answer, const MakeNetlist &make)
{
    serving = true;
    servedModules = answer;
    servedNetlist = make;
}

void ScriptedExtraction::serveTop(const QString &top, const MakeNetlist &make)
{
    serve({{top}, {top}, {}}, make);
}

void ScriptedExtraction::queueModules(const ModulesAnswer &answer)
{
    modulesQueue.append(answer);
}

void ScriptedExtraction::queueNetlist(FATHOM::RtlNetlist *netlist, const QStringList &log)
{
    netlistQueue.append({netlist, log});
}

void ScriptedExtraction::duringModules(const Hook &hook)
{
    modulesHook = hook;
}

void ScriptedExtraction::duringNetlist(const Hook &hook)
{
    netlistHook = hook;
}

void ScriptedExtraction::clear()
{
    for (const NetlistAnswer &answer : qAsConst(netlistQueue))
        delete answer.netlist;
    netlistQueue.clear();
    modulesQueue.clear();
    serving = false;
    lastInfo.clear();
    modulesHook = nullptr;
    netlistHook = nullptr;
}

bool ScriptedExtraction::answerModules(QStringList &topModules, QStringList &modules,
                                       QStringList &messages, const QMap<QString, QVariant> &info)
{
    if (modulesQueue.isEmpty() && !serving)
        return false;
    lastInfo = info;
    if (const Hook hook = std::exchange(modulesHook, nullptr))
        hook();

    const ModulesAnswer answer = modulesQueue.isEmpty() ? servedModules : modulesQueue.takeFirst();
    topModules = answer.topModules;
    modules = answer.modules;
    messages = answer.messages;
    return true;
}

bool ScriptedExtraction::answerNetlist(FATHOM::RtlNetlist **netlist, QStringList &log)
{
    if (netlistQueue.isEmpty() && !serving)
        return false;

    // The answer is taken first: what runs in the loop may ask for a netlist itself.
    const NetlistAnswer answer =
        netlistQueue.isEmpty() ? NetlistAnswer{servedNetlist(), {}} : netlistQueue.takeFirst();
    const Hook hook = std::exchange(netlistHook, nullptr);

    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&loop, &hook] {
        if (hook)
            hook();
        loop.quit();
    });
    loop.exec();

    *netlist = answer.netlist;
    log = answer.log;
    return true;
}

} // namespace Standin
