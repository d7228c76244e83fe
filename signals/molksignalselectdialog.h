// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlistguard.h"

#include <QDialog>
#include <QList>

class QTreeWidgetItem;

namespace FATHOM {
class Hierachy;
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace FATHOM

namespace MOLK {

class RtlNetlistTreeView;
class SignalItem;
struct HierarchyMatch;
struct NetFilter;
namespace Ui {
class MolkSignalSelectDialog;
}

/// The dialog "Search Nets": finds nets and buses of the design by name on the left, and collects
/// those that the user picks on the right.
///
/// Nothing is sorted: results come in the netlist's order, buses ahead of single nets. Rows hold
/// copies of what they show and nothing of the netlist.
class MolkSignalSelectDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param design the design to search; not owned. It may be null, and it may be destroyed
    ///        while the dialog is open: a search then ends without results.
    /// \param direction 0 for a Probe In, 1 for a Probe Out: decides which nets may not be chosen.
    MolkSignalSelectDialog(FATHOM::RtlNetlist *design, int direction, QWidget *parent);
    ~MolkSignalSelectDialog() override;

    /// Runs the dialog and returns selectedSignals(), or an empty list if the user cancels or the
    /// dialog is destroyed from outside while it runs. In the latter case \a parent may be gone
    /// too, so a caller guards itself with a QPointer.
    static QList<SignalItem> getSignals(FATHOM::RtlNetlist *netlist, int type, QWidget *parent);

    /// As getSignals(), for a caller that wants one name: returns selectedSignalName(), or an empty
    /// string.
    static QString getSignal(FATHOM::RtlNetlist *netlist, int type, QWidget *parent);

    /// The entries of the selected list, top to bottom, each bus with its bits.
    QList<SignalItem> selectedSignals() const;

    /// The name that the first selected entry stands for: its own, or for a bus that of its first
    /// bit that may be chosen. Empty without an entry or without such a bit.
    QString selectedSignalName() const;

protected:
    /// Return runs a search. Every other key that reaches the dialog is dropped, so that Return
    /// never presses OK by that road and Escape doesn't close the dialog.
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void on_pushButtonSearch_clicked();
    void on_checkBoxAdvancedFilter_toggled(bool checked);
    void onAddSignal();
    void onAddAllSignal();
    void onDelSignal();
    void onDelAllSignal();

private:
    NetFilter readFilter() const;
    FATHOM::Hierachy *pickedLevel() const;
    void showNets(const QList<FATHOM::RtlNet *> &nets, const QList<FATHOM::RtlNetBus *> &buses);
    void showHierarchy(const HierarchyMatch &match);
    void addHierarchyRow(QTreeWidgetItem *parent, const HierarchyMatch &match);
    void fillModuleRow(QTreeWidgetItem *row, const HierarchyMatch &match);

    Ui::MolkSignalSelectDialog *ui;
    NetlistGuard netlist;
    RtlNetlistTreeView *searchInView = nullptr;
    int type;
};

} // namespace MOLK
