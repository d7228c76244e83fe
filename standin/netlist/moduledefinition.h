// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "netlist/netflags.h"
#include "netlist/stringinterner.h"

#include "hostglobal.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <vector>

namespace Standin {

/// A declared range, `[left:right]`.
struct Range
{
    qint32 left = 0;
    qint32 right = 0;

    qint64 size() const { return qAbs(qint64(left) - right) + 1; }

    /// The index \a position places from the left.
    qint32 at(quint32 position) const
    {
        return qint32(left >= right ? left - qint64(position) : left + qint64(position));
    }

    /// Whether \a index lies in the range; then \a position tells how far from the left.
    bool contains(qint64 index, quint32 *position) const;
};

/// A declared net: a single one, a bus, or an unpacked array of either.
struct NetDeclaration
{
    /// The identifier as declared, without the marks of an escaped identifier.
    QString name;

    /// Ranges of an unpacked array, outermost first; one net or bus is made for each element.
    QVector<Range> dimensions;

    bool isBus = false;
    Range range; ///< Of a bus.

    /// NetFlags of each bit: elements in declared order, and in each the bits from the left. Empty
    /// if nothing is flagged.
    QByteArray flags;
};

/// What all instances of one parameterised module have in common: nets, buses and instances with
/// their names and flags, each kept once however often the module is instantiated.
///
/// It is filled first and then sealed; only then is it read. All names live in one pool of bytes,
/// since a string object a net would be more than all the rest together.
class HOST_EXPORT ModuleDefinition
{
public:
    /// A net without a range.
    struct Single
    {
        quint32 nameBegin;
        quint32 nameLength : 30;
        quint32 flags : 2;
    };

    /// A net with a range. The flags are those of the whole bus.
    struct Bus
    {
        quint32 nameBegin;
        quint32 nameLength : 30;
        quint32 flags : 2;
        Range range;
        quint32 bitFlags; ///< Where the flags of the bits begin, or UniformFlags.
    };

    /// Instances of one definition: one, or an array of them.
    struct Instance
    {
        QByteArray name; ///< UTF-8, as all names here.
        int definition;
        bool isArray;
        Range range;
        quint32 ordinal; ///< Number of instances ahead of it, arrays counted out.

        quint32 count() const { return isArray ? quint32(range.size()) : 1; }
    };

    /// All bits of the bus have the flags of the bus.
    static constexpr quint32 UniformFlags = 0xffffffff;

    /// Widest bus, and longest instance array, that is taken.
    static constexpr qint64 MaximumSize = 1 << 24;

    /// \param sourceName name of the module as the source has it.
    explicit ModuleDefinition(const QString &sourceName = QString());

    const QString &sourceName() const { return moduleName; }

    /// Adds what is declared, behind what is there.
    ///
    /// \return false, and nothing is added, if the name is empty or taken by another net, an array
    ///         has more than MaximumSize bits, or the flags are of another number than the bits.
    bool addNet(const NetDeclaration &declaration);

    /// Adds an instance of \a definition, behind those that are there.
    ///
    /// \return false, and nothing is added, if the name is empty or taken by another instance.
    bool addInstance(const QString &name, int definition);

    /// As addInstance(), for one instance each index of \a range, which may hold MaximumSize.
    bool addInstanceArray(const QString &name, int definition, Range range);

    /// Ends the filling. Names that could be mistaken for another in a path are turned into the
    /// form of escaped identifiers here: a backslash, the name with each blank doubled, a blank.
    /// These are names that hold a slash or a blank or begin with a backslash, and names that end
    /// like a bit or an element of another declared name.
    void seal();

    const std::vector<Single> &singles() const { return singleNets; }
    const std::vector<Bus> &buses() const { return busNets; }
    const std::vector<Instance> &instances() const { return instanceList; }

    /// Flags of the bit \a position places from the left.
    NetFlags bitFlags(const Bus &bus, quint32 position) const;

    /// \a prefix, a name of the pool and \a suffix, which is ASCII, in one string.
    QString composed(const QString &prefix, quint32 begin, quint32 length, const char *suffix,
                     int suffixLength) const;

    /// Finds a single net by its whole name in UTF-8, element indices included. The first search
    /// sorts the names.
    ///
    /// \return its index, or -1.
    int findSingle(const QByteArray &name) const;

    /// As findSingle(), for a bus by its whole name without the range.
    int findBus(const QByteArray &name) const;

    /// As findSingle(), for an instance by its whole name, array index included.
    ///
    /// \return its place among all instances with arrays counted out, or -1.
    int findInstance(const QByteArray &name) const;

    /// Number of instances with arrays counted out.
    quint32 instanceCount() const { return expandedInstances; }

    /// Name of the \a element'th instance of \a instance, from the left.
    static QByteArray instanceName(const Instance &instance, quint32 element);

private:
    // Records that stand in a row for one declaration whose name ends in a bracket.
    struct Bracketed
    {
        quint32 first;
        quint32 count;
        int nameLength; ///< Without the indices of elements.
    };

    void addRecord(const NetDeclaration &declaration, const QByteArray &name, qint64 firstBit);
    template<typename Record>
    void settleNames(const Bracketed &bracketed, std::vector<Record> *records);
    quint32 storeName(const QByteArray &name);
    QByteArray nameOf(quint32 begin, quint32 length) const;
    bool takeInstance(const QString &name, Instance instance);

    QString moduleName;
    std::vector<Single> singleNets;
    std::vector<Bus> busNets;
    std::vector<Instance> instanceList;
    QByteArray pool;
    QByteArray bitFlagPool;
    quint32 expandedInstances = 0;
    bool isAscii = true;

    // While the definition is filled: what is declared, and the records to be looked at again
    // because their names end in a bracket.
    StringInterner declaredNets;
    StringInterner declaredInstances;
    std::vector<Bracketed> bracketSingles;
    std::vector<Bracketed> bracketBuses;

    // Indices sorted by name, made for the first search.
    mutable std::vector<quint32> singleOrder;
    mutable std::vector<quint32> busOrder;
    mutable std::vector<quint32> instanceOrder;
};

} // namespace Standin
