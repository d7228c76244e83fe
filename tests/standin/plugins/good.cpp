// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

#include "addin/iplugin.h"
#include "core/iview.h"
#include "core/viewmanager.h"
#include "dev/devicearg.h"

/// A plug-in that says what is done to it, and exports what the host calls by name.
class GoodPlugin : public Addin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")
    Q_INTERFACES(Addin::IPlugin)

public:
    ~GoodPlugin() override { tell("deleted plug-in"); }

    bool initialize() override
    {
        tell("initialize");
        addAutoReleasedObject(new Pooled("one"));
        addAutoReleasedObject(new Pooled("two"));
        addAutoReleasedObject(nullptr);
        return true;
    }

    void extensions() override { tell("extensions"); }
    void shutdown() override { tell("shutdown"); }
};

namespace MOLK {

class MolkView : public Core::IView
{
};

/// Opens a view for each file name and knows the last one.
class Q_DECL_EXPORT MolkViewManager
{
public:
    static MolkViewManager *instance();
    static bool openMolkView(const QString &fileName, const DEV::DeviceArg &device);
    static bool closeMolkView(const QString &fileName);
    QList<MolkView *> molkViews();

private:
    QList<MolkView *> views;
};

MolkViewManager *MolkViewManager::instance()
{
    static MolkViewManager manager;
    return &manager;
}

bool MolkViewManager::openMolkView(const QString &fileName, const DEV::DeviceArg &device)
{
    auto *view = new MolkView;
    view->setWindowTitle(fileName + " for " + device.device());
    instance()->views.append(view);
    Core::ViewManager::showView(view);
    return true;
}

bool MolkViewManager::closeMolkView(const QString &fileName)
{
    tell("close " + fileName);
    return fileName == "known";
}

QList<MolkView *> MolkViewManager::molkViews()
{
    return views;
}

} // namespace MOLK

#include "good.moc"
