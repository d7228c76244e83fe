// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlistguard.h"

#include <QDialog>

namespace FATHOM {
class RtlNetlist;
}

namespace MOLK {

class ProbeIn;
namespace Ui {
class ProbeDialog;
}

/// Edits the ordered list of signals of one probe port. The top row is the most significant signal.
/// Rows are moved by dragging, or by the keys of RowMovingKeys.
///
/// The rows are the dialog's only working state: they are loaded from the port once, and the port
/// is written at most once, by accept(). A caller that runs exec() makes the dialog on the heap
/// with itself as parent and holds it in a QPointer, since a host may destroy the parent meanwhile.
class ProbeDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param port the port to edit; not owned, and it has to outlive the dialog. A ProbeOut is
    ///        used through its ProbeIn part.
    /// \param design handed on to the net search; not owned. It may be null, and it may be
    ///        destroyed while the dialog is open: the search then finds nothing.
    /// \param direction 0 for a Probe In, 1 for a Probe Out.
    ProbeDialog(ProbeIn *port, FATHOM::RtlNetlist *design, int direction, QWidget *parent);
    ~ProbeDialog() override;

signals:
    /// Emitted by closeWidget() ahead of the closing.
    void closeOldSearchDialog();

public slots:
    /// Writes the rows to the port with one call of ProbeIn::setSignalNet() and closes the dialog.
    /// More than 256 signals, a bus counting by its bits, are refused with a warning: nothing is
    /// written and the dialog stays open.
    void accept() override;

    /// Emits closeOldSearchDialog() and closes the dialog as rejected, without a question.
    void closeWidget();

private slots:
    void onAdd();
    void onRemove();
    void on_treeWidget_itemSelectionChanged();

private:
    Ui::ProbeDialog *ui;
    ProbeIn *probe;
    NetlistGuard netlist;
    int type;
};

} // namespace MOLK
