// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "namepositions.h"
#include "signalitem.h"

#include <QVector>

namespace MOLK {

/// Whether \a bus has members and \a bit, itself without members, is one of them by name.
bool busContains(const SignalItem &bus, const SignalItem &bit);

/// Adds \a item to \a buses, a list of whole buses and bits that stand alone: a bit that a bus of
/// the list holds is dropped, and a bus takes the place of its bits, at the end of the list. Two
/// buses, or two bits, aren't compared.
void mergeBusItem(QList<SignalItem> &buses, SignalItem item);

/// Splits \a picked, in order, and appends it to two lists: what is a bus or a bit goes through
/// mergeBusItem() into \a buses, the rest to \a singles. Bits that may not be chosen are left out
/// of their buses; whether the entry itself may be chosen isn't looked at.
void partitionSignals(const QList<SignalItem> &picked, QList<SignalItem> &buses,
                      QList<SignalItem> &singles);

/// Takes picked signals one by one and splits them as partitionSignals() tells, in time that grows
/// with the number of names.
class PickedSignals
{
public:
    PickedSignals() = default;

    /// Starts with \a mergedBuses in the list of buses.
    explicit PickedSignals(const QList<SignalItem> &mergedBuses);

    void add(const SignalItem &picked);

    /// Adds to the list of buses alone, as mergeBusItem() does.
    void merge(const SignalItem &item);

    QList<SignalItem> buses() const;
    QList<SignalItem> singles() const { return singleItems; }

private:
    void append(const SignalItem &item);

    QList<SignalItem> busItems;
    QVector<bool> replaced;  // By a bus that holds the bit at this position of busItems.
    NamePositions heldBits;  // Names of the bits of all buses.
    NamePositions aloneBits; // Positions in busItems of what has no members.
    QList<SignalItem> singleItems;
};

/// Drops from lists of incoming signals what rows that are met one after another cover already.
///
/// Both lists are changed when this ends.
class IncomingSignals
{
public:
    IncomingSignals(QList<SignalItem> &incomingBuses, QList<SignalItem> &incomingSingles);
    ~IncomingSignals();

    /// Meets the next row, which carries \a existing.
    ///
    /// \return false if the row has to go, since an incoming bus holds the bit that it is.
    bool meet(const SignalItem &existing);

    /// As meet() for whatever isn't a single net.
    bool meetBus(const SignalItem &existing);

private:
    Q_DISABLE_COPY(IncomingSignals)

    void meetSingle(const SignalItem &existing);
    bool meetAloneBit(const SignalItem &existing);
    void meetWholeBus(const SignalItem &existing);
    int firstOfName(const QString &name);
    int firstHolder(const QString &name);
    void dropBefore(const QString &name, int end);

    QList<SignalItem> &buses;
    QList<SignalItem> &singles;
    QVector<bool> busDropped;
    QVector<bool> singleDropped;
    // Each is made when a row asks for it first.
    bool hasBusNames = false;
    bool hasHolders = false;
    bool hasSingleNames = false;
    NamePositions busNames;
    NamePositions holders;
    NamePositions singleNames;
};

} // namespace MOLK
