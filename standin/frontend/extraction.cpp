// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/extraction.h"

#include "frontend/extractiondialog.h"
#include "frontend/frontend.h"
#include "frontend/progress.h"
#include "frontend/resultcache.h"
#include "frontend/toolbox.h"
#include "frontend/toollog.h"
#include "netlist/netlistbuilder.h"

#include "fathom/rtlnetlist.h"

#include <QApplication>
#include <QEventLoop>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

namespace Standin {

namespace {

/// How many designs are held in memory.
constexpr int recentReadings = 4;

/// A reading that has ended, with what catchNets() delivers.
struct Result
{
    QByteArray key;
    KeptReading kept;
    QString top; ///< Name of the delivered top, as far as it is known.
    int fileCount = 0;
    std::shared_ptr<const ModuleTable> table; ///< Null if there is nothing to deliver.
};

using ResultPointer = std::shared_ptr<Result>;

QString cacheDirectory(const ExtractionOptions &options)
{
    if (!options.cacheDirectory.isEmpty())
        return options.cacheDirectory;
    const QString base = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return base.isEmpty() ? QString() : base + "/extraction";
}

/// The dialog of a reading, where there are windows at all.
std::unique_ptr<ExtractionDialog> makeDialog(Progress *progress, int files, int delay,
                                             QWidget *parent)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return nullptr;
    return std::make_unique<ExtractionDialog>(progress, files, delay, parent);
}

/// Lets everything that waits in the event loop happen once, painting included.
void turnEventLoop()
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, SLOT(quit()));
    loop.exec();
    QCoreApplication::processEvents();
}

} // namespace

struct Extraction::Private
{
    explicit Private(const ExtractionOptions &options)
        : tools(options)
        , cache(Standin::cacheDirectory(options), options.cacheBytes)
    {
    }

    ResultPointer read(DesignSources *sources, Progress &progress);
    ResultPointer recall(const QByteArray &key);
    ResultPointer recallFromDisk(const QByteArray &key, const FrontEnd &frontEnd,
                                 Progress &progress);
    ResultPointer readAnew(const DesignSources &sources, const FrontEnd &frontEnd,
                           Progress &progress, const QStringList &messages);
    void elaborate(const FrontEnd &frontEnd, Reading &reading, Result *result, Progress &progress);
    bool load(const FrontEnd &frontEnd, Result *result, Progress &progress);
    void remember(const ResultPointer &result);

    ToolBox tools;
    ResultCache cache;
    QList<ResultPointer> recent; ///< The latest first.
    ResultPointer current;       ///< What catchNets() delivers; null before the first reading.
    QList<Progress *> active;
};

ResultPointer Extraction::Private::recall(const QByteArray &key)
{
    for (const ResultPointer &result : qAsConst(recent)) {
        if (result->key == key)
            return isCurrent(result->kept, tools.options().sourceBytes) ? result : nullptr;
    }
    return nullptr;
}

bool Extraction::Private::load(const FrontEnd &frontEnd, Result *result, Progress &progress)
{
    progress.enterStage("Reading the elaborated design");
    auto table = std::make_shared<ModuleTable>();
    QString error;
    bool loaded = false;
    const Artifact artifact = result->kept.artifact;
    runBeside([&] { loaded = frontEnd.load(artifact, table.get(), &error); });
    if (loaded)
        result->table = table;
    else
        result->kept.messages.append("ERROR: the elaborated design can't be read: "
                                     + printable(error));
    return loaded;
}

ResultPointer Extraction::Private::recallFromDisk(const QByteArray &key, const FrontEnd &frontEnd,
                                                  Progress &progress)
{
    const QTemporaryDir directory;
    if (!frontEnd.isWorthKeeping() || !directory.isValid())
        return nullptr;
    auto result = std::make_shared<Result>();
    bool found = false;
    runBeside([&] {
        found = cache.find(key, directory.filePath("artifact"), &result->kept)
            && isCurrent(result->kept, tools.options().sourceBytes);
    });
    if (!found || hasErrors(result->kept.messages))
        return nullptr;
    if (!result->kept.artifact.file.isEmpty() && !load(frontEnd, result.get(), progress))
        return nullptr;
    return result;
}

void Extraction::Private::elaborate(const FrontEnd &frontEnd, Reading &reading, Result *result,
                                    Progress &progress)
{
    KeptReading &kept = result->kept;
    // Without one top the sources are still checked, so that an error in them is told rather than
    // what follows from it.
    const bool hasTop = kept.lists.topModules.size() == 1;
    const QString top = hasTop ? kept.lists.topModules.first() : QString();
    if (reading.elaborate(top, &kept.artifact, &kept.messages) && !progress.isCancelled())
        load(frontEnd, result, progress);
}

ResultPointer Extraction::Private::readAnew(const DesignSources &sources, const FrontEnd &frontEnd,
                                            Progress &progress, const QStringList &messages)
{
    auto result = std::make_shared<Result>();
    KeptReading &kept = result->kept;
    kept.messages = messages;
    const std::unique_ptr<Reading> reading = frontEnd.read(sources, tools, progress);
    kept.lists = reading->scan(&kept.messages);
    if (!progress.isCancelled())
        elaborate(frontEnd, *reading, result.get(), progress);
    if (progress.isCancelled() || hasErrors(kept.messages))
        return result;

    result->key = readingKey(sources, frontEnd, tools);
    runBeside([&] {
        const QStringList dependencies = reading->dependencies();
        kept.dependencies = fileStates(dependencies, tools.options().sourceBytes);
        kept.absentFiles = reading->absentFiles();
        if (frontEnd.isWorthKeeping())
            cache.store(result->key, kept);
    });
    return result;
}

void Extraction::Private::remember(const ResultPointer &result)
{
    current = result;
    if (result->key.isEmpty())
        return;
    for (int i = recent.size() - 1; i >= 0; --i) {
        if (recent.at(i)->key == result->key)
            recent.removeAt(i);
    }
    recent.prepend(result);
    while (recent.size() > recentReadings)
        recent.removeLast();
}

ResultPointer Extraction::Private::read(DesignSources *sources, Progress &progress)
{
    auto refused = std::make_shared<Result>();
    QStringList &unreadable = refused->kept.messages;
    loadTexts(sources, tools.options().sourceBytes, &unreadable);
    if (sources->files.isEmpty() && !unreadable.isEmpty())
        return refused;
    for (const std::unique_ptr<FrontEnd> &frontEnd : frontEnds()) {
        if (!frontEnd->accepts(*sources))
            continue;
        if (!unreadable.isEmpty())
            return readAnew(*sources, *frontEnd, progress, unreadable);
        const QByteArray key = readingKey(*sources, *frontEnd, tools);
        ResultPointer result = recall(key);
        if (!result)
            result = recallFromDisk(key, *frontEnd, progress);
        if (!result)
            return readAnew(*sources, *frontEnd, progress, QStringList());
        result->key = key;
        return result;
    }
    refused->kept.messages.append("ERROR: there is no front end for these files");
    return refused;
}

Extraction::Extraction(const ExtractionOptions &options)
    : d(std::make_shared<Private>(options))
{
}

Extraction::~Extraction()
{
    const QList<Progress *> running = d->active;
    for (Progress *progress : running)
        progress->cancel();
}

int Extraction::toolRuns() const
{
    return d->tools.runs();
}

void Extraction::catchModules(QStringList &topModules, QStringList &modules, QStringList &messages,
                              const QMap<QString, QVariant> &info, QWidget *parent)
{
    // The object may go in one of the nested loops; what it works on stays until the call ends.
    const std::shared_ptr<Private> data = d;
    DesignSources sources = designSources(info);
    Progress progress;
    data->active.append(&progress);
    ResultPointer result;
    {
        const auto dialog =
            makeDialog(&progress, sources.files.size(), data->tools.options().dialogDelay, parent);
        result = data->read(&sources, progress);
    }
    data->active.removeOne(&progress);

    if (progress.isCancelled()) {
        result = std::make_shared<Result>(*result);
        result->key.clear();
        result->table.reset();
        result->kept.messages.append("ERROR: cancelled");
    }
    const QStringList &tops = result->kept.lists.topModules;
    result->top = tops.size() == 1 ? tops.first() : sources.top;
    result->fileCount = sources.files.size();
    data->remember(result);
    topModules = result->kept.lists.topModules;
    modules = result->kept.lists.modules;
    messages = result->kept.messages;
}

void Extraction::catchNets(FATHOM::RtlNetlist **netlist, QStringList &log, QWidget *parent)
{
    const std::shared_ptr<Private> data = d;
    const ResultPointer result = data->current ? data->current : std::make_shared<Result>();
    log = result->kept.messages;
    *netlist = nullptr;
    Progress progress;
    data->active.append(&progress);
    {
        const auto dialog = makeDialog(&progress, result->fileCount, 0, parent);
        progress.enterStage("Building the netlist");
        turnEventLoop();
        QString error;
        if (progress.isCancelled())
            log.append("ERROR: cancelled");
        else if (result->table)
            *netlist = Standin::elaborate(*result->table, &error);
        if (!error.isEmpty())
            log.append("ERROR: " + printable(error));
    }
    data->active.removeOne(&progress);
    if (!*netlist)
        *netlist = NetlistBuilder(result->top).build();
}

} // namespace Standin
