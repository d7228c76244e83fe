// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/yosysfrontend.h"

#include "frontend/progress.h"
#include "frontend/toollog.h"
#include "netlist/yosysjson.h"

namespace Standin {

namespace {

class YosysReading : public Reading
{
public:
    YosysReading(const DesignSources &designSources, Progress &progressOfReading)
        : sources(designSources)
        , progress(progressOfReading)
    {
    }

    ModuleLists scan(QStringList *log) override
    {
        ModuleLists lists;
        if (sources.files.size() != 1) {
            log->append("ERROR: a netlist in a \".json\" file can't be combined with other files");
            return lists;
        }
        progress.enterStage("Reading the netlist");
        JsonModules found;
        QString error;
        bool done = false;
        runBeside([&] {
            done = listYosysModules(sources.files.first().path, sources.top, &found, &error);
        });
        if (!done)
            log->append("ERROR: " + printable(error));
        lists.topModules = found.topModules;
        lists.modules = found.modules;
        return lists;
    }

    bool elaborate(const QString &top, Artifact *artifact, QStringList *) override
    {
        if (top.isEmpty())
            return false;
        artifact->file = sources.files.first().path;
        artifact->top = top;
        return true;
    }

private:
    DesignSources sources;
    Progress &progress;
};

} // namespace

QString YosysFrontEnd::name() const
{
    return "Yosys JSON";
}

bool YosysFrontEnd::accepts(const DesignSources &sources) const
{
    return sources.has(SourceFile::YosysNetlist);
}

QByteArray YosysFrontEnd::identity(const DesignSources &, const ToolBox &) const
{
    return QByteArray("reader");
}

std::unique_ptr<Reading> YosysFrontEnd::read(const DesignSources &sources, ToolBox &,
                                             Progress &progress) const
{
    return std::make_unique<YosysReading>(sources, progress);
}

bool YosysFrontEnd::load(const Artifact &artifact, ModuleTable *table, QString *error) const
{
    JsonReadOptions options;
    options.top = artifact.top;
    return readYosysJson(artifact.file, options, table, error);
}

} // namespace Standin
