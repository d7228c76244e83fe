// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkexport.h"

#include "core/iview.h"
#include "qutil/ieventhandler.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

class QModelIndex;
class QPoint;

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

class MolkOptionWidget;

namespace Ui {
class MolkView;
}

namespace private_impl {
class MolkViewPrivate;
}

/// The document window of one `.molk` file: the cores in a tree on the left, the page of the
/// current core on the right, and banners about outside changes on top.
///
/// A view is made, opened once with open(), and handed to the host's view manager, which owns it
/// from then on. It watches its file and subscribes to the host's events by itself. It closes
/// itself, by closing its parent with Qt::WA_DeleteOnClose, when the user says so in a banner or
/// when a reload fails.
///
/// The window title and the short title are the file's name, followed by " *" while the document
/// differs from the file.
class MOLK_EXPORT MolkView : public Core::IView, public QUtil::IEventHandler
{
    Q_OBJECT

public:
    /// Makes a view without a file, which hears the host's events from here on.
    ///
    /// \param parent may be null.
    explicit MolkView(QWidget *parent = nullptr);
    ~MolkView() override;

    /// Opens \a fileName and reads the design's netlist. Call it once on a view.
    ///
    /// A file without cores gets a first core, and the document counts as modified then. Message
    /// boxes and the progress dialog of the net extraction run nested event loops in here.
    ///
    /// \param fileName path of the file, kept as it is given.
    /// \param resultFile not used.
    /// \param error receives why the file can't be opened. It stays as it is if the reader of the
    ///        file gave no reason, or if the netlist was refused: the user has been told then.
    /// \return false if the view can't be used; the caller deletes it.
    bool open(const QString &fileName, const QString &resultFile, QString *error);

    /// Checks the document and writes it, unless the project's synthesis tool is one that the cores
    /// don't work with.
    ///
    /// modificationStatusChanged() follows if the document was modified.
    /// \return false if nothing was written; the user has been told why.
    bool save();

    /// The path that open() was given; empty before.
    QString file() const;

    /// The device that the view was opened for. It is only kept for the host.
    QString device() const;
    void setDevice(const QString &name);

    /// Whether the document differs from the file.
    bool isModified() const;

    /// Sets the modified state and always emits modificationStatusChanged(); the titles stay as
    /// they are.
    void setModified(bool modified);

    /// Puts the page \a widget into the stack and a line for it into the tree; the stack becomes
    /// its parent. From here on the page's edits mark the document as modified.
    /// \return the number of pages in the stack afterwards.
    int addMolkOptionWidget(MolkOptionWidget *widget);

    /// Takes the page \a widget out of the stack and its line out of the tree, and renumbers the
    /// lines. The page isn't deleted; it stays a hidden child of the stack.
    void removeMolkOptionWidget(MolkOptionWidget *widget);

    /// Shows the page of core number \a id, counted from 0. Nothing happens if there is none.
    void changeMolkWidget(int id);

    /// Raises a banner if \a event tells of a change of the RTL design. While a banner of this kind
    /// is unanswered every event is ignored.
    void handleIEvent(const QUtil::IEvent *event) override;

signals:
    /// The document's modified state was set to \a modified. The titles change after it.
    void modificationStatusChanged(bool modified);

public slots:
    /// Marks the document as modified and puts the star into the titles; nothing happens if it is
    /// marked already.
    void onModified();

    /// Offers to add a core, or to remove the one whose line lies at \a pos of the tree's viewport.
    /// Whatever comes of a removal, the first core's page is shown then. Nested event loops run in
    /// here, and the view may be gone when it returns.
    void on_treeWidget_customContextMenuRequested(const QPoint &pos);

    /// Shows the page of the core whose line is \a index, as changeMolkWidget() does.
    void on_treeWidget_doubleClicked(const QModelIndex &index);
    void on_treeWidget_clicked(const QModelIndex &index);

    /// Hides the banner about a changed netlist file.
    void onOKBtn();

    /// The watcher has seen a change of the file: asks the user half a second later what to do, by
    /// checkForReload(). What changes until the user has answered is ignored.
    void onFileChange();

    /// Raises the banner: whether to reload, or whether to keep the view if there is no file.
    void checkForReload();

    /// The answers of that banner, which is the sender and is taken down. Reloading reads the file
    /// and makes all cores and pages anew; the modified state stays unless the file has no cores.
    /// If the file can't be read the user is told so, and the view closes as by onBannerClose().
    void onBannerReload();

    /// The view stays as it is; onBannerKeep() is the same.
    void onBannerCancel();
    void onBannerKeep();

    /// Ends the modified state, with modificationStatusChanged() if it was set, and closes the
    /// view's parent and with it the view, without a question.
    void onBannerClose();

    /// Subscribes to the host's events about the design.
    void subscribeEvent();

    /// Undoes subscribeEvent().
    void unsubscribeEvent();

    /// Reads the design's netlist through the host and hands it to all pages. The old netlist is
    /// gone at once, whatever comes of it. Nested event loops run in here, and the view may be gone
    /// when it returns false.
    /// \return false if there is no netlist now; the user has been told why.
    bool readRtlNetlist();

    /// The answers of the banner about a change of the design, which is the sender and is taken
    /// down. A design that is refused on reloading closes the view as onBannerClose() does.
    void onRtlReload();

    /// The view goes on with the netlist that it has.
    void onReloadCancel();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    friend class private_impl::MolkViewPrivate;

    void designFileChanged();
    void topModuleChanged();
    void askForRtlReload(const QString &question);
    void getRtlModules(QMap<QString, QVariant> &info, QStringList &topModules, QStringList &modules,
                       QStringList &messages);
    QStringList includePaths();
    FATHOM::RtlNetlist *updateRtlNetlist();
    bool reloadMolkFile();

    Ui::MolkView *ui;
    private_impl::MolkViewPrivate *d = nullptr;
    QString deviceName;
    bool designChanged = false;
};

} // namespace MOLK
