// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/moduledefinition.h"
#include "netlist/rawdesign.h"
#include "netlist/stringinterner.h"

#include <QHash>
#include <QString>

#include <vector>

namespace Standin {

/// Bits in a list of YosysDesign::bits, the lowest first.
struct YosysBits
{
    quint32 begin = 0;
    quint32 count = 0;
};

/// Where something was declared, for putting things in the order of the source: each place is a
/// number of a file, a line and a column.
using YosysPlace = std::vector<qint32>;

struct YosysPort
{
    quint32 name;
    PortDirection direction = PortDirection::None;
    YosysBits bits;
};

struct YosysCell
{
    QString name;
    QString path; ///< As YosysNet::path.
    quint32 type = 0;
    bool isHidden = false;
    bool isInterface = false;
    bool isVhdl = false;
    bool readIsClocked = true; ///< A memory's read port has a clock.
    bool writeIsClocked = true;
    QString scopeModule; ///< Of a cell that only tells where a flattened module was.
    YosysPlace place;
    std::vector<YosysPort> ports;
};

struct YosysNet
{
    QString name;
    QString path; ///< Names of the flattened levels and its own, parted by blanks; mostly empty.
    bool hasRange = false;
    bool goesUp = false; ///< The leftmost bit has the lowest index.
    qint32 offset = 0;   ///< The lowest index.
    YosysPlace place;
    YosysBits bits;
};

struct YosysModule
{
    quint32 name = 0;
    QString sourceName;
    bool isBlackBox = false;
    bool isTop = false;
    std::vector<YosysPort> ports;
    std::vector<YosysCell> cells;
    std::vector<YosysNet> nets;
};

struct YosysDesign
{
    /// Bits that have no number.
    enum : qint32 { Zero = -1, One = -2, Undefined = -3, HighImpedance = -4 };

    StringInterner names;
    std::vector<YosysModule> modules;
    QHash<quint32, int> moduleByName;
    std::vector<qint32> bits;
    qint32 highestBit = 0;
};

/// Reads the file into \a design. \return false, with the reason in \a error, if that's impossible.
bool parseYosysJson(const QString &file, YosysDesign *design, QString *error);

/// The name that a module has in the source: `leaf` of `$paramod\leaf\W=4`.
QString yosysSourceName(const QString &name);

} // namespace Standin
