// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/molkbridge.h"

#include "core/iview.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace {

// The compiler's names of the operations, and how each is called. A member function takes its
// object as first argument, and QList<X *> is one and the same in memory for every X; a view's
// object begins with its Core::IView.
constexpr char instanceName[] = "_ZN4MOLK15MolkViewManager8instanceEv";
constexpr char openName[] = "_ZN4MOLK15MolkViewManager12openMolkViewERK7QStringRKN3DEV9DeviceArgE";
constexpr char closeName[] = "_ZN4MOLK15MolkViewManager13closeMolkViewERK7QString";
constexpr char viewsName[] = "_ZN4MOLK15MolkViewManager9molkViewsEv";
constexpr char constViewsName[] = "_ZNK4MOLK15MolkViewManager9molkViewsEv";

using InstanceOperation = void *(*)();
using OpenOperation = bool (*)(const QString &, const DEV::DeviceArg &);
using CloseOperation = bool (*)(const QString &);
using ViewsOperation = QList<Core::IView *> (*)(void *manager);

} // namespace

namespace Standin {

bool MolkBridge::resolve(const QString &file, QString *error)
{
    const QString path = QFileInfo(file).canonicalFilePath();
    QLibrary library(path);
    library.setLoadHints(QLibrary::PreventUnloadHint);

    MolkBridge found;
    found.instanceOperation = library.resolve(instanceName);
    found.openOperation = library.resolve(openName);
    found.closeOperation = library.resolve(closeName);
    found.viewsOperation = library.resolve(viewsName);
    if (!found.viewsOperation)
        found.viewsOperation = library.resolve(constViewsName);

    QStringList missing;
    if (!found.instanceOperation)
        missing.append("instance");
    if (!found.openOperation)
        missing.append("openMolkView");
    if (!found.closeOperation)
        missing.append("closeMolkView");
    if (!found.viewsOperation)
        missing.append("molkViews");
    if (!missing.isEmpty()) {
        *error = "The plug-in " + QDir::toNativeSeparators(file)
            + " does not export these operations of MOLK::MolkViewManager: " + missing.join(", ")
            + ".";
        return false;
    }
    *this = found;
    return true;
}

bool MolkBridge::isReady() const
{
    return openOperation != nullptr;
}

void MolkBridge::reset()
{
    *this = MolkBridge();
}

void MolkBridge::openMolkView(const QString &fileName, const DEV::DeviceArg &device) const
{
    if (isReady())
        reinterpret_cast<OpenOperation>(openOperation)(fileName, device);
}

bool MolkBridge::closeMolkView(const QString &fileName) const
{
    return isReady() && reinterpret_cast<CloseOperation>(closeOperation)(fileName);
}

QList<Core::IView *> MolkBridge::molkViews() const
{
    if (!isReady())
        return {};
    void *manager = reinterpret_cast<InstanceOperation>(instanceOperation)();
    return reinterpret_cast<ViewsOperation>(viewsOperation)(manager);
}

} // namespace Standin
