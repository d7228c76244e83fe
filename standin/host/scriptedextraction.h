// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <functional>

namespace FATHOM {
class RtlNetlist;
}

namespace Standin {

/// One answer of FATHOM::catchRtlModules().
struct ModulesAnswer
{
    QStringList topModules;
    QStringList modules;
    QStringList messages;
};

/// The answers that a test gives in place of the real net extraction. What isn't scripted is
/// extracted for real.
class HOST_EXPORT ScriptedExtraction
{
public:
    using MakeNetlist = std::function<FATHOM::RtlNetlist *()>;
    using Hook = std::function<void()>;

    ScriptedExtraction();

    /// Deletes the netlists that nobody asked for.
    ~ScriptedExtraction();

    Q_DISABLE_COPY_MOVE(ScriptedExtraction)

    /// Answers every call, as long as no queued answer is left: the modules are those of
    /// \a answer, and each netlist is one that \a make returns, which the caller of the service
    /// owns.
    void serve(const ModulesAnswer &answer, const MakeNetlist &make);

    /// serve() for a design whose one module is \a top.
    void serveTop(const QString &top, const MakeNetlist &make);

    /// Queues the answer of one call of catchRtlModules().
    void queueModules(const ModulesAnswer &answer);

    /// Queues the answer of one call of catchRtlNetsWithProgressDialog(). \a netlist is owned by
    /// the script until it is delivered; it may be null, to play a service that breaks its promise.
    void queueNetlist(FATHOM::RtlNetlist *netlist, const QStringList &log = QStringList());

    /// Runs \a hook in the next call of catchRtlModules(), before its answer is given.
    void duringModules(const Hook &hook);

    /// Runs \a hook from the nested event loop of the next scripted call of
    /// catchRtlNetsWithProgressDialog(). The loop ends after it.
    void duringNetlist(const Hook &hook);

    /// The design information map that the last scripted call of catchRtlModules() was given.
    const QMap<QString, QVariant> &givenInfo() const { return lastInfo; }

    /// Takes back everything that was set.
    void clear();

    /// \internal What the two services of FATHOM do. They return false if nothing is scripted.
    bool answerModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                       const QMap<QString, QVariant> &info);
    bool answerNetlist(FATHOM::RtlNetlist **netlist, QStringList &log);

private:
    struct NetlistAnswer
    {
        FATHOM::RtlNetlist *netlist = nullptr;
        QStringList log;
    };

    QList<ModulesAnswer> modulesQueue;
    QList<NetlistAnswer> netlistQueue;
    bool serving = false;
    ModulesAnswer servedModules;
    MakeNetlist servedNetlist;
    QMap<QString, QVariant> lastInfo;
    Hook modulesHook;
    Hook netlistHook;
};

} // namespace Standin
