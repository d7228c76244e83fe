// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Standin {

/// Looks for the fewest things, taken from the front of \a count, that have to be left out for
/// \a works to be true. It is called with numbers of things, about as often as \a count has bits.
///
/// It must work with all of them left out, and must not with none.
template<typename Works>
int shortestFront(int count, Works works)
{
    int enough = count;
    int tooFew = 0;
    while (enough - tooFew > 1) {
        const int middle = (enough + tooFew) / 2;
        (works(middle) ? enough : tooFew) = middle;
    }
    return enough;
}

} // namespace Standin
