// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/moduleorder.h"

namespace Standin {

std::vector<int> modulesFromBelow(int top, std::size_t count,
                                  const std::function<int(int, std::size_t)> &child, int *looping)
{
    enum State { Unknown, Open, Done };
    struct Step
    {
        int module;
        std::size_t instance;
    };
    *looping = -1;
    std::vector<int> order;
    std::vector<State> states(count, Unknown);
    std::vector<Step> stack{{top, 0}};
    states[std::size_t(top)] = Open;
    while (!stack.empty()) {
        Step &step = stack.back();
        const int below = child(step.module, step.instance++);
        if (below == -2) {
            states[std::size_t(step.module)] = Done;
            order.push_back(step.module);
            stack.pop_back();
        } else if (below >= 0 && states[std::size_t(below)] == Open) {
            *looping = below;
        } else if (below >= 0 && states[std::size_t(below)] == Unknown) {
            states[std::size_t(below)] = Open;
            stack.push_back({below, 0});
        }
    }
    return order;
}

} // namespace Standin
