// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalrow.h"

#include "signaldisplay.h"

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QPalette>
#include <QSignalBlocker>
#include <QTreeWidget>

namespace MOLK {

static const int computedRoles[] = {Qt::DisplayRole, Qt::ToolTipRole, Qt::FontRole,
                                    Qt::ForegroundRole, Qt::UserRole};

static bool isComputed(int role)
{
    return role == Qt::EditRole
        || std::find(std::begin(computedRoles), std::end(computedRoles), role)
        != std::end(computedRoles);
}

SignalRow::SignalRow(const SignalItem &look, const QString &shownText, int rowType,
                     bool parentEnabled)
    : QTreeWidgetItem(rowType)
    , italic(!look.alias.isEmpty())
    , selectable(look.selectable)
    , found(look.found)
    , text(shownText)
{
    if (!selectable)
        setFlags(flags() & ~(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    else if (!parentEnabled)
        setFlags(flags() & ~Qt::ItemIsEnabled);
}

QVariant SignalRow::data(int column, int role) const
{
    if (column != 0 || stored || !isComputed(role))
        return QTreeWidgetItem::data(column, role);
    return computed(role);
}

QVariant SignalRow::computed(int role) const
{
    switch (role) {
    case Qt::FontRole: {
        if (!italic)
            return QVariant();
        QFont font;
        font.setStyle(QFont::StyleItalic);
        return font;
    }
    case Qt::ForegroundRole:
        if (!selectable)
            return QBrush(Qt::gray);
        return found ? QApplication::palette().brush(QPalette::WindowText) : QBrush(Qt::red);
    case Qt::UserRole: {
        const SignalItem *item = carried();
        return item ? signalToVariant(*item) : QVariant();
    }
    default:
        return text;
    }
}

void SignalRow::setData(int column, int role, const QVariant &value)
{
    if (column == 0 && !stored && isComputed(role))
        store();
    QTreeWidgetItem::setData(column, role, value);
}

void SignalRow::store()
{
    const QSignalBlocker blocker(treeWidget() ? treeWidget()->model() : nullptr);
    for (int role : computedRoles) {
        const QVariant value = computed(role);
        if (value.isValid())
            QTreeWidgetItem::setData(0, role, value);
    }
    stored = true;
}

QTreeWidgetItem *SignalRow::clone() const
{
    return completed(new SignalRow(*this));
}

const SignalItem *SignalRow::carried() const
{
    return nullptr;
}

QTreeWidgetItem *SignalRow::completed(QTreeWidgetItem *copy) const
{
    QList<QTreeWidgetItem *> copies;
    copies.reserve(childCount());
    for (int k = 0; k < childCount(); ++k)
        copies.append(child(k)->clone());
    copy->addChildren(copies);

    if (!(flags() & Qt::ItemIsEnabled))
        copy->setFlags(flags());
    return copy;
}

SignalItemRow::SignalItemRow(const SignalItem &carriedItem, const QString &shownText, int rowType,
                             bool parentEnabled)
    : SignalRow(carriedItem, shownText, rowType, parentEnabled)
    , item(carriedItem)
{
}

QTreeWidgetItem *SignalItemRow::clone() const
{
    return completed(new SignalItemRow(*this));
}

const SignalItem *SignalItemRow::carried() const
{
    return &item;
}

} // namespace MOLK
