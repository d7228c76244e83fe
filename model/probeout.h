// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "probein.h"

#include <QString>

namespace MOLK {

/// A port of a core that drives nets of the design and has an initial value.
class ProbeOut : public ProbeIn
{
public:
    /// Makes a port without signals whose initial value is "0x0".
    ///
    /// \param portNumber counted from 0.
    explicit ProbeOut(int portNumber);

    /// The initial value as last set, by convention "0x" and upper-case hexadecimal digits.
    QString getValue() const;

    /// Stores \a text unchanged, whatever it is.
    void setValue(QString text);

private:
    QString value;
};

} // namespace MOLK
