// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qutil/ievent.h"

#include <QVariantMap>

namespace Standin {

/// An event as its sender writes it down: `Event("TE.File.Add", {{"file", path}})`.
class HOST_EXPORT Event : public QUtil::IEvent
{
public:
    /// \param name what type() answers.
    /// \param values what get() answers, by key.
    explicit Event(const QString &name, const QVariantMap &values = QVariantMap());
    ~Event() override;

    QString type() const override;
    QVariant get(const QString &key) const override;

    /// The event in one line, its values in the order of their keys:
    /// "TE.File.Remove enable=true type=2".
    QString toString() const;

private:
    QString name;
    QVariantMap values;
};

} // namespace Standin
