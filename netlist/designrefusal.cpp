// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designrefusal.h"

#include <algorithm>

namespace MOLK {

bool reportsError(const QStringList &messages)
{
    return std::any_of(messages.cbegin(), messages.cend(), [](const QString &message) {
        return message.startsWith("ERROR", Qt::CaseSensitive);
    });
}

DesignRefusal modulesRefusal(const QString &top, const QStringList &topModules,
                             const QStringList &modules)
{
    const DesignRefusal noModule = {"Design files contain some errors",
                                    "Get no module from design."};
    if (modules.isEmpty()) {
        if (top.isEmpty())
            return noModule;
        return {"Invalid Top Module", "No module named \"" + top + "\", please reset top module."};
    }
    if (topModules.size() == 1)
        return {};
    if (top.isEmpty())
        return {"Multiple Top Module", "Multiple top, please set top module."};
    return noModule;
}

DesignRefusal netlistRefusal(const QString &top, const QString &received, bool usesJtag)
{
    if (!top.isEmpty() && received != top) {
        return {"Error",
                "Get module \"" + top + "\" failed, just received default module \"" + received
                    + "\"."};
    }
    if (usesJtag)
        return {"Error", "OD_JTAG used in design conflicts with MOLK."};
    return {};
}

} // namespace MOLK
