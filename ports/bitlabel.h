// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

namespace MOLK {

/// A label with the bits of one signal, made to be one of thousands in a ValueTree.
///
/// Most labels are never looked at. So a label costs little until prepare(): it isn't polished, and
/// a request to show it is only noted. From prepare() on it is a plain QLabel, which it is in every
/// other respect before, its class name included. Bits that are wider than the label are shown in
/// full as a tool tip.
class BitLabel : public QLabel
{
public:
    /// Makes a label without a parent.
    ///
    /// \param bits the text, `0` and `1`.
    explicit BitLabel(const QString &bits);

    /// Makes the label fit to be shown. Does nothing the second time.
    void prepare();

    const QMetaObject *metaObject() const override;
    bool event(QEvent *event) override;
    void setVisible(bool visible) override;

private:
    bool withoutClass = false;
    bool prepared = false;
};

} // namespace MOLK
