// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/frontend.h"

#include "frontend/verilatorfrontend.h"
#include "frontend/yosysfrontend.h"

namespace Standin {

Reading::~Reading() = default;
FrontEnd::~FrontEnd() = default;

const std::vector<std::unique_ptr<FrontEnd>> &frontEnds()
{
    static const std::vector<std::unique_ptr<FrontEnd>> all = [] {
        std::vector<std::unique_ptr<FrontEnd>> list;
        list.push_back(std::make_unique<YosysFrontEnd>());
        list.push_back(std::make_unique<VerilatorFrontEnd>());
        return list;
    }();
    return all;
}

} // namespace Standin
