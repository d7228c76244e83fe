// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "signalitem.h"

#include <QTreeWidgetItem>

namespace MOLK {

/// A row that shows one signal and computes what it shows.
///
/// A tree of a million rows is built in a fraction of the time and memory that rows filled through
/// their setters take, since a row stores its text once and nothing for tool tip, font and colour.
/// Whatever reads a row can't tell the difference: each role yields what the setters would have
/// stored. The first setter that touches a computed role stores them all, and from then on the row
/// is like any other.
class SignalRow : public QTreeWidgetItem
{
public:
    /// Makes a row that looks as \a look tells and reads \a shownText, carrying no signal.
    ///
    /// \param parentEnabled whether the row above, if any, is enabled: a row below a disabled one
    /// is
    ///        disabled as well. Qt would do that by itself if the row above were disabled after it
    ///        got its children, but takes it back when both enter a tree.
    SignalRow(const SignalItem &look, const QString &shownText, int rowType,
              bool parentEnabled = true);

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant &value) override;
    QTreeWidgetItem *clone() const override;

    /// The signal that this row was made with, unless a setter has been at the row; null if there
    /// is none. Tells the same as data() at once and without a copy.
    const SignalItem *signal() const { return stored ? nullptr : carried(); }

protected:
    virtual const SignalItem *carried() const;

    /// Gives \a copy what the copy constructor of the base class leaves out: copies of the child
    /// rows, and a disabled state that outlives the insertion into a tree.
    QTreeWidgetItem *completed(QTreeWidgetItem *copy) const;

private:
    QVariant computed(int role) const;
    void store();

    // In this order the flags fill the gap at the end of the base class.
    bool stored = false;
    bool italic;
    bool selectable;
    bool found;
    QString text;
};

/// A SignalRow that carries the signal that it shows under `Qt::UserRole`.
class SignalItemRow : public SignalRow
{
public:
    SignalItemRow(const SignalItem &carriedItem, const QString &shownText, int rowType,
                  bool parentEnabled = true);

    QTreeWidgetItem *clone() const override;

protected:
    const SignalItem *carried() const override;

private:
    SignalItem item;
};

} // namespace MOLK
