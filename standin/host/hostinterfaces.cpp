// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The out-of-line destructors of the interfaces: one home for their tables and type information, so
// that dynamic_cast and qobject_cast agree between the host and a loaded plug-in.

#include "core/ifilewizardfactory.h"
#include "core/iproject.h"
#include "fathom/hierachy.h"
#include "fathom/rtlnet.h"
#include "fathom/rtlnetbus.h"
#include "fathom/rtlnetlist.h"
#include "qutil/ievent.h"
#include "qutil/ieventhandler.h"
#include "te/designmanager.h"
#include "te/flowmanager.h"

namespace Core {

IWizardFactory::IWizardFactory(QObject *parent)
    : QObject(parent)
{
}

IWizardFactory::~IWizardFactory() = default;

IFileWizardFactory::IFileWizardFactory(QObject *parent)
    : IWizardFactory(parent)
{
}

IFileWizardFactory::~IFileWizardFactory() = default;

IProject::~IProject() = default;

} // namespace Core

namespace FATHOM {

RtlNet::~RtlNet() = default;
RtlNetBus::~RtlNetBus() = default;
Hierachy::~Hierachy() = default;
RtlNetlist::~RtlNetlist() = default;

} // namespace FATHOM

namespace QUtil {

IEvent::~IEvent() = default;
IEventHandler::~IEventHandler() = default;

} // namespace QUtil

namespace TE {

DesignManager::~DesignManager() = default;
FlowManager::~FlowManager() = default;

} // namespace TE
