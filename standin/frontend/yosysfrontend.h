// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/frontend.h"

namespace Standin {

/// Takes a netlist that Yosys has written as JSON, whatever language it came from. No tool runs.
class YosysFrontEnd : public FrontEnd
{
public:
    QString name() const override;
    bool accepts(const DesignSources &sources) const override;
    QByteArray identity(const DesignSources &sources, const ToolBox &tools) const override;
    bool isWorthKeeping() const override { return false; }
    std::unique_ptr<Reading> read(const DesignSources &sources, ToolBox &tools,
                                  Progress &progress) const override;
    bool load(const Artifact &artifact, ModuleTable *table, QString *error) const override;
};

} // namespace Standin
