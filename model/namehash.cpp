// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "namehash.h"

#include <QRandomGenerator>

#include <cstring>

namespace MOLK {

namespace {

struct Keys
{
    quint64 even = QRandomGenerator::system()->generate64();
    quint64 odd = QRandomGenerator::system()->generate64();
    quint64 last = QRandomGenerator::system()->generate64();
};

// What is read of a name at once.
struct Block
{
    quint64 even;
    quint64 odd;
};

} // namespace

static const int unitsOfABlock = sizeof(Block) / sizeof(QChar);

// Each bit of the result depends on all bits of both numbers.
static quint64 folded(quint64 a, quint64 b)
{
    __extension__ using Product = unsigned __int128;
    const Product product = Product(a) * b;
    return quint64(product) ^ quint64(product >> 64);
}

uint nameHash(QStringView name)
{
    static const Keys keys;
    const auto mixed = [](quint64 hash, const Block &block) {
        return folded(block.even ^ keys.even ^ hash, block.odd ^ keys.odd);
    };
    const QChar *at = name.data();
    auto left = name.size();
    quint64 hash = keys.last ^ quint64(left);
    for (; left >= unitsOfABlock; left -= unitsOfABlock) {
        Block block;
        std::memcpy(&block, at, sizeof block);
        hash = mixed(hash, block);
        at += unitsOfABlock;
    }
    Block rest = {};
    if (left > 0)
        std::memcpy(&rest, at, std::size_t(left) * sizeof(QChar));
    hash = mixed(hash, rest);
    hash = folded(hash ^ keys.even, keys.last);
    return uint(hash ^ hash >> 32);
}

} // namespace MOLK
