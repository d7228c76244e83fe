// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include <addin/iplugin.h>
#include <core/actionmanager.h>
#include <core/ifilewizardfactory.h>
#include <core/iproject.h>
#include <core/iview.h>
#include <core/projectmanager.h>
#include <core/viewmanager.h>
#include <dev/devicearg.h>
#include <fathom/extraction.h>
#include <fathom/hierachy.h>
#include <fathom/rtlnet.h>
#include <fathom/rtlnetbus.h>
#include <fathom/rtlnetlist.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <qutil/ieventhandler.h>
#include <te/designmanager.h>
#include <te/flowmanager.h>
#include <te/taskengine.h>

/// A handler as another plug-in of the host would write it.
class TopWatcher : public QUtil::IEventHandler
{
public:
    void handleIEvent(const QUtil::IEvent *event) override
    {
        if (event->get("option").toString() == QLatin1String("TopModule"))
            top =
                TE::TaskEngine::instance()->designManager()->getOptionValue("TopModule").toString();
    }

    QString top;
};

TopWatcher *makeTopWatcher()
{
    auto *watcher = new TopWatcher;
    QUtil::EventManager::instance()->subscribe(watcher, "TE.Option.Change");
    return watcher;
}
