// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkcore.h"

#include <QList>

#include <memory>
#include <vector>

namespace MOLK {

/// Cores while they are read: they die with the reader unless somebody takes them over.
class OwnedCores
{
public:
    void append(std::unique_ptr<MolkCore> core) { cores.push_back(std::move(core)); }
    int size() const { return int(cores.size()); }

    /// Hands the cores over; the caller owns them.
    QList<MolkCore *> take()
    {
        QList<MolkCore *> taken;
        taken.reserve(size());
        for (std::unique_ptr<MolkCore> &core : cores)
            taken.append(core.release());
        cores.clear();
        return taken;
    }

private:
    std::vector<std::unique_ptr<MolkCore>> cores;
};

} // namespace MOLK
