// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/moduledefinition.h"

#include "netlist/pathname.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace Standin {

bool Range::contains(qint64 index, quint32 *position) const
{
    const qint64 distance = left >= right ? left - index : index - left;
    if (distance < 0 || distance >= size())
        return false;
    *position = quint32(distance);
    return true;
}

ModuleDefinition::ModuleDefinition(const QString &sourceName)
    : moduleName(sourceName)
{
}

static qint64 elementCount(const NetDeclaration &declaration)
{
    qint64 count = 1;
    for (const Range &dimension : declaration.dimensions) {
        count *= dimension.size();
        if (count > ModuleDefinition::MaximumSize)
            break;
    }
    return count;
}

// Names that differ as texts may be one as UTF-8, which has nothing for half a character.
static bool takeName(StringInterner *declared, const QString &name, const QByteArray &utf8)
{
    const quint32 count = declared->count();
    const bool isAscii = utf8.size() == name.size();
    declared->intern(isAscii ? name : textOfName(utf8));
    return declared->count() > count;
}

bool ModuleDefinition::addNet(const NetDeclaration &declaration)
{
    const qint64 elements = elementCount(declaration);
    const qint64 width = declaration.isBus ? declaration.range.size() : 1;
    if (declaration.name.isEmpty() || elements > MaximumSize || width > MaximumSize
        || elements * width > MaximumSize)
        return false;
    if (!declaration.flags.isEmpty() && declaration.flags.size() != elements * width)
        return false;
    const QByteArray name = declaration.name.toUtf8();
    if (!takeName(&declaredNets, declaration.name, name))
        return false;

    const QByteArray stem = needsEscape(name) ? escapedName(name) : name;
    if (stem.endsWith(']')) {
        auto &bracketed = declaration.isBus ? bracketBuses : bracketSingles;
        const std::size_t first = declaration.isBus ? busNets.size() : singleNets.size();
        bracketed.push_back({quint32(first), quint32(elements), stem.size()});
    }
    for (qint64 element = 0; element < elements; ++element) {
        QByteArray indices;
        qint64 rest = element;
        for (int i = declaration.dimensions.size() - 1; i >= 0; --i) {
            const Range &dimension = declaration.dimensions.at(i);
            indices.prepend('[' + QByteArray::number(dimension.at(quint32(rest % dimension.size())))
                            + ']');
            rest /= dimension.size();
        }
        addRecord(declaration, stem + indices, element * width);
    }
    return true;
}

void ModuleDefinition::addRecord(const NetDeclaration &declaration, const QByteArray &name,
                                 qint64 firstBit)
{
    const QByteArray &flags = declaration.flags;
    const quint32 begin = storeName(name);
    if (!declaration.isBus) {
        const int own = flags.isEmpty() ? 0 : flags.at(int(firstBit));
        singleNets.push_back({begin, quint32(name.size()) & 0x3fffffff, quint32(own) & 3});
        return;
    }

    Bus bus{begin, quint32(name.size()) & 0x3fffffff, 0, declaration.range, UniformFlags};
    if (!flags.isEmpty()) {
        int all = NoProbeIn | NoProbeOut;
        int any = 0;
        const int width = int(declaration.range.size());
        for (int i = 0; i < width; ++i) {
            all &= flags.at(int(firstBit) + i);
            any |= flags.at(int(firstBit) + i);
        }
        bus.flags = quint32((all & NoProbeIn) | (any & NoProbeOut)) & 3;
        if (all != any) {
            bus.bitFlags = quint32(bitFlagPool.size());
            bitFlagPool.append(flags.constData() + firstBit, width);
        }
    }
    busNets.push_back(bus);
}

quint32 ModuleDefinition::storeName(const QByteArray &name)
{
    const auto begin = quint32(pool.size());
    pool += name;
    isAscii =
        isAscii && std::all_of(name.begin(), name.end(), [](char c) { return uchar(c) < 128; });
    return begin;
}

bool ModuleDefinition::addInstance(const QString &name, int definition)
{
    return takeInstance(name, {QByteArray(), definition, false, Range(), 0});
}

bool ModuleDefinition::addInstanceArray(const QString &name, int definition, Range range)
{
    return range.size() <= MaximumSize
        && takeInstance(name, {QByteArray(), definition, true, range, 0});
}

bool ModuleDefinition::takeInstance(const QString &name, Instance instance)
{
    instance.name = name.toUtf8();
    if (instance.name.isEmpty() || expandedInstances + instance.count() > MaximumSize
        || !takeName(&declaredInstances, name, instance.name))
        return false;
    instance.ordinal = expandedInstances;
    expandedInstances += instance.count();
    instanceList.push_back(instance);
    return true;
}

// A name that reads like a bit or an element of something else that is declared here.
static bool isMistakable(const QByteArray &name, const StringInterner &declared)
{
    QByteArray base = name;
    qint32 index = 0;
    while (splitIndex(base, &base, &index)) {
        if (declared.contains(textOfName(base)))
            return true;
    }
    return false;
}

// Of an element only the declared name is escaped, its index stands behind.
template<typename Record>
void ModuleDefinition::settleNames(const Bracketed &bracketed, std::vector<Record> *records)
{
    const Record &any = (*records)[bracketed.first];
    const QByteArray declared = nameOf(any.nameBegin, quint32(bracketed.nameLength));
    if (!isMistakable(declared, declaredNets))
        return;
    const QByteArray escaped = escapedName(declared);
    for (quint32 i = bracketed.first; i < bracketed.first + bracketed.count; ++i) {
        Record &record = (*records)[i];
        const QByteArray whole = nameOf(record.nameBegin, record.nameLength);
        const QByteArray name = escaped + whole.mid(bracketed.nameLength);
        record.nameBegin = storeName(name);
        record.nameLength = quint32(name.size()) & 0x3fffffff;
    }
}

void ModuleDefinition::seal()
{
    for (const Bracketed &bracketed : bracketSingles)
        settleNames(bracketed, &singleNets);
    for (const Bracketed &bracketed : bracketBuses)
        settleNames(bracketed, &busNets);
    for (Instance &instance : instanceList) {
        if (needsEscape(instance.name) || isMistakable(instance.name, declaredInstances))
            instance.name = escapedName(instance.name);
    }

    declaredNets.clear();
    declaredInstances.clear();
    bracketSingles = std::vector<Bracketed>();
    bracketBuses = std::vector<Bracketed>();
    singleNets.shrink_to_fit();
    busNets.shrink_to_fit();
    instanceList.shrink_to_fit();
    pool.squeeze();
    bitFlagPool.squeeze();
}

NetFlags ModuleDefinition::bitFlags(const Bus &bus, quint32 position) const
{
    if (bus.bitFlags == UniformFlags)
        return NetFlags(QFlag(int(bus.flags)));
    return NetFlags(QFlag(bitFlagPool.at(int(bus.bitFlags + position))));
}

QByteArray ModuleDefinition::nameOf(quint32 begin, quint32 length) const
{
    return QByteArray::fromRawData(pool.constData() + begin, int(length));
}

QString ModuleDefinition::composed(const QString &prefix, quint32 begin, quint32 length,
                                   const char *suffix, int suffixLength) const
{
    const char *name = pool.constData() + begin;
    if (!isAscii)
        return prefix + textOfName(name, int(length)) + QLatin1String(suffix, suffixLength);
    QString whole(prefix.size() + int(length) + suffixLength, Qt::Uninitialized);
    auto *out = reinterpret_cast<ushort *>(whole.data());
    std::memcpy(out, prefix.constData(), std::size_t(prefix.size()) * sizeof(QChar));
    out += prefix.size();
    for (quint32 i = 0; i < length; ++i)
        *out++ = uchar(name[i]);
    for (int i = 0; i < suffixLength; ++i)
        *out++ = uchar(suffix[i]);
    return whole;
}

// The index of the record with this name, found by halving in the order of names.
template<typename Records, typename NameOf>
static int findByName(const Records &records, std::vector<quint32> *order, const QByteArray &name,
                      NameOf nameOfRecord)
{
    if (order->size() != records.size()) {
        order->resize(records.size());
        std::iota(order->begin(), order->end(), 0u);
        std::sort(order->begin(), order->end(), [&](quint32 a, quint32 b) {
            return nameOfRecord(records[a]) < nameOfRecord(records[b]);
        });
    }
    const auto found = std::lower_bound(
        order->begin(), order->end(), name,
        [&](quint32 i, const QByteArray &wanted) { return nameOfRecord(records[i]) < wanted; });
    if (found == order->end() || nameOfRecord(records[*found]) != name)
        return -1;
    return int(*found);
}

int ModuleDefinition::findSingle(const QByteArray &name) const
{
    return findByName(singleNets, &singleOrder, name,
                      [this](const Single &net) { return nameOf(net.nameBegin, net.nameLength); });
}

int ModuleDefinition::findBus(const QByteArray &name) const
{
    return findByName(busNets, &busOrder, name,
                      [this](const Bus &bus) { return nameOf(bus.nameBegin, bus.nameLength); });
}

int ModuleDefinition::findInstance(const QByteArray &name) const
{
    const auto nameOfInstance = [](const Instance &instance) {
        return instance.name;
    };
    const int whole = findByName(instanceList, &instanceOrder, name, nameOfInstance);
    if (whole >= 0 && !instanceList[std::size_t(whole)].isArray)
        return int(instanceList[std::size_t(whole)].ordinal);

    QByteArray base;
    qint32 index = 0;
    quint32 position = 0;
    if (!splitIndex(name, &base, &index))
        return -1;
    const int array = findByName(instanceList, &instanceOrder, base, nameOfInstance);
    if (array < 0)
        return -1;
    const Instance &instance = instanceList[std::size_t(array)];
    if (!instance.isArray || !instance.range.contains(index, &position))
        return -1;
    return int(instance.ordinal + position);
}

QByteArray ModuleDefinition::instanceName(const Instance &instance, quint32 element)
{
    if (!instance.isArray)
        return instance.name;
    return instance.name + '[' + QByteArray::number(instance.range.at(element)) + ']';
}

} // namespace Standin
