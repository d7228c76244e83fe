// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// Counts the basic blocks that instrumented code runs through while this lives.
///
/// That is a measure of cost which is the same on every machine and in every run, so that a test
/// can tell growth without a clock. Counted is what a library of molk_add_counted_library() does,
/// with what is inlined into it; a call into Qt's own libraries counts as nothing.
class BlockCount
{
public:
    BlockCount();

    qint64 blocks() const;

private:
    qint64 start;
};
