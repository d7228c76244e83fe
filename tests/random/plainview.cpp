// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainview.h"

#include <QMap>

namespace Plain {

View::View(const QString &filePath)
    : path(filePath)
{
}

QString View::baseName() const
{
    return path.mid(path.lastIndexOf('/') + 1);
}

void View::makePages(const Configuration &configuration)
{
    pages.clear();
    for (const Core &core : configuration)
        pages.append(Page(core));
    if (pages.isEmpty())
        addCore();
    current = 0;
}

void View::open(const Configuration &configuration, int readDesign)
{
    const QString filePath = path;
    *this = View(filePath);
    design = readDesign;
    watched = true;
    makePages(configuration);
    title = baseName();
    isOpen = true;
}

void View::activate(Action *saveAction)
{
    save = saveAction;
    updateAction();
}

void View::close()
{
    isOpen = false;
    if (save)
        save->enabled = false;
    save = nullptr;
}

void View::closeUnasked()
{
    if (modified) {
        modified = false;
        updateAction();
    }
    close();
}

void View::updateAction()
{
    if (!save)
        return;
    save->text = "&Save \"" + title + '"';
    save->toolTip = "Save \"" + title + '"';
    save->enabled = modified;
}

// The action hears of it before the titles change.
void View::touch()
{
    if (modified)
        return;
    modified = true;
    updateAction();
    title = baseName() + " *";
    shortTitle = title;
}

void View::addCore()
{
    pages.append(Page());
    touch();
}

void View::removeCore(int index)
{
    pages.removeAt(index);
    current = 0;
    touch();
}

static void judgeClock(const Core &core, const Design &design, const QString &prefix,
                       QStringList *lines)
{
    if (!core.useClock)
        return;
    const Net *net = design.find(core.clock);
    if (core.clock.isEmpty())
        lines->append(prefix + "No synchronization clock specified");
    else if (!net)
        lines->append(prefix + "The output probe synchronizes with user clock does not exist");
    else if (net->noIn)
        lines->append(prefix + "Invalid user clock selected for output probe synchronization");
}

QString View::check()
{
    QStringList lines;
    QMap<QString, QStringList> drivers;
    for (int i = 0; i < pages.size(); ++i) {
        pages[i].store();
        const Core &core = pages.at(i).core;
        const QString prefix = "Molk " + QString::number(i) + ": ";
        int width = 0;
        for (const Port &port : core.ins)
            width += widthOf(port.items);
        for (int j = 0; j < core.outs.size(); ++j) {
            const QStringList names = singleNames(core.outs.at(j).items);
            width += names.size();
            for (const QString &name : names) {
                drivers[name].append("molk_" + QString::number(i) + "->Probe Out"
                                     + QString::number(j));
            }
        }
        if (width == 0) {
            lines.append(prefix + "At least one Probe In port or Probe Out port should be enabled");
        }
        judgeClock(core, designs().at(design), prefix, &lines);
    }
    for (auto it = drivers.constBegin(); it != drivers.constEnd(); ++it) {
        if (it.value().size() > 1) {
            lines.append("ERROR:Signal \"" + it.key() + "\" has multiple drivers("
                         + it.value().join(", ") + ",)");
        }
    }
    return lines.join("\n");
}

Configuration View::coresToWrite()
{
    for (Page &page : pages)
        page.core.module = designs().at(design).levels.first().name;
    return cores();
}

void View::saved()
{
    if (modified) {
        modified = false;
        updateAction();
    }
    title = baseName();
    shortTitle = title;
}

void View::reload(const Configuration &configuration)
{
    makePages(configuration);
    watched = true;
}

// The Probe In rows are shown anew; all else stays.
void View::takeDesign(int readDesign)
{
    design = readDesign;
    for (Page &page : pages)
        page.refreshIns();
}

static bool isSource(int type)
{
    return type >= 2 && type <= 4;
}

QString View::questionFor(const QString &event, const QVariantMap &values, int fileType,
                          bool fileEnabled) const
{
    if (designChanged)
        return QString();
    const int type = values.value("type").toInt();
    const QString option = values.value("option").toString();
    bool files = false;
    if (event == "TE.File.Add" || event == "TE.File.Modified")
        files = isSource(fileType) && fileEnabled;
    else if (event == "TE.File.Remove")
        files = isSource(type) && values.value("enable").toBool();
    else if (event == "TE.File.Change.Enable")
        files = isSource(type);
    else if (event == "TE.File.Change.Type")
        files = isSource(type) || isSource(values.value("previous").toInt());
    else if (event == "TE.Option.Change" && option == "TopModule")
        return "Top module changed. Do you want to reload?";
    else if (event == "TE.Option.Change")
        files = option == "IncludePath" || option == "Verilog_Standard";
    return files ? QString("Design files changed. Do you want to reload?") : QString();
}

void View::addDesignBanner(const QString &question)
{
    designChanged = true;
    banners.append({true, question, "Reload", "Cancel"});
}

void View::addFileBanner(bool exists)
{
    if (exists) {
        banners.append({false, "The file '" + path + "' changed on disk.\nDo you want to reload?",
                        "Reload", "Cancel"});
    } else {
        banners.append(
            {false,
             "The file '" + path + "' has been removed on disk.\nDo you still want to keep it?",
             "Keep It", "Close"});
    }
}

void View::removeBanner(bool aboutDesign)
{
    for (int i = banners.size() - 1; i >= 0; --i) {
        if (banners.at(i).aboutDesign == aboutDesign)
            banners.removeAt(i);
    }
    if (aboutDesign)
        designChanged = false;
    else
        reloadPending = false;
}

Configuration View::cores() const
{
    Configuration all;
    for (const Page &page : pages)
        all.append(page.core);
    return all;
}

} // namespace Plain
