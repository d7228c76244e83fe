// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "frontend/frontend.h"

namespace Standin {

/// Reads Verilog and SystemVerilog through Verilator, and VHDL through GHDL's synthesis into the
/// same stage:
///
/// 1. Copies of the sources without what translate_off excludes are preprocessed as one text.
/// 2. Our scanner finds the modules in it and writes stubs for those that are missing.
/// 3. Text and stubs are elaborated into an XML file.
///
/// Macros that tell of Verilator are not defined, since designs hide code from it. If the text is
/// refused, two other readings are tried before the errors stand: other keywords for Verilog files
/// with errors, which may use newer keywords as names or use newer statements; and the macros of
/// Verilator defined after all.
class VerilatorFrontEnd : public FrontEnd
{
public:
    QString name() const override;
    bool accepts(const DesignSources &sources) const override;
    QByteArray identity(const DesignSources &sources, const ToolBox &tools) const override;
    std::unique_ptr<Reading> read(const DesignSources &sources, ToolBox &tools,
                                  Progress &progress) const override;
    bool load(const Artifact &artifact, ModuleTable *table, QString *error) const override;
};

} // namespace Standin
