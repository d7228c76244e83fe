// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkexport.h"

#include <QList>
#include <QObject>

namespace Core {
class IView;
}

namespace DEV {
class DeviceArg;
}

namespace MOLK {

class MolkInserterPlugin;
class MolkView;

/// Knows every open MolkView, opens and closes them by file name, and keeps the one Save action in
/// step with the active view.
///
/// There is one manager, made when the library is loaded. It is registered with the host from the
/// plug-in's start to its end, and gone after that.
class MOLK_EXPORT MolkViewManager : public QObject
{
    Q_OBJECT

public:
    MolkViewManager();
    ~MolkViewManager() override;

    /// The manager; not made on demand.
    static MolkViewManager *instance();

    /// Brings the view of \a fileName forward, or makes one and shows it.
    ///
    /// Views are found by their absolute paths, compared case-sensitively. A file that can't be
    /// opened is reported to the user, and no view remains.
    ///
    /// \param device the target device; ignored if there is a view already.
    /// \return true in every case.
    static bool openMolkView(const QString &fileName, const DEV::DeviceArg &device);

    /// Asks the host to close the view of \a fileName, which the user may refuse.
    /// \return whether there is such a view.
    static bool closeMolkView(const QString &fileName);

    /// All open views in order of opening; owned by the host.
    QList<MolkView *> molkViews() const;

private slots:
    void onCurrentViewChanged(Core::IView *view);
    void onMolkViewClosed(Core::IView *view);
    void onMolkViewModified(bool modified);
    void onActSave();
    void onViewDestroyed(QObject *view);

private:
    friend class MolkInserterPlugin;

    void initialize();
    void deinit();
};

} // namespace MOLK
