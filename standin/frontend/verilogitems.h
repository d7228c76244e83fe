// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "frontend/verilogtokens.h"

#include <vector>

namespace Standin {

/// One declaration, process, instantiation or the like: what can be taken out of a design and leave
/// the rest legal. Generate constructs are no items, but what stands in them is.
struct VerilogItem
{
    int begin; ///< Index of its first token.
    int end;   ///< Index behind its last token.
};

/// A module, interface, package, program, primitive, or what stands between those.
struct VerilogUnit
{
    int begin = 0;  ///< Index of the token that opens it.
    int header = 0; ///< Index behind the semicolon of its first line.
    int end = 0;    ///< Index of the token that ends it; of what isn't ended behind its last.
    int name = -1;  ///< Index of its name; -1 for what stands outside all others.
    std::vector<VerilogItem> items; ///< In order.
};

/// True if the token \a index opens a module, interface, program or primitive: the same words stand
/// in the types of ports and variables too.
HOST_EXPORT bool opensModule(const VerilogTokens &tokens, int index);

/// Index of the name that the module opened at \a index has.
HOST_EXPORT int moduleName(const VerilogTokens &tokens, int index);

/// Index behind the statement at \a begin: one with a semicolon, a block, a loop or condition with
/// what belongs to it. It lies at or before \a limit, whatever the text is.
HOST_EXPORT int statementEnd(const VerilogTokens &tokens, int begin, int limit);

/// The units of a text and the items in each, in order. Faulty text is divided as well as can be:
/// an item that isn't ended ends where the next process or its unit does.
HOST_EXPORT std::vector<VerilogUnit> verilogUnits(const VerilogTokens &tokens);

} // namespace Standin
