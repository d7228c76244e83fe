// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/xmltypes.h"

namespace Standin {

// Types nest as deep as their author writes them, and no author goes this deep.
static constexpr int MaximumDepth = 256;

qint64 NetShape::elements() const
{
    qint64 count = 1;
    for (const Range &dimension : dimensions)
        count = qMin(count * dimension.size(), ModuleDefinition::MaximumSize + 1);
    return count;
}

const NetShape &XmlTypes::shape(quint32 id)
{
    return shape(id, 0);
}

const NetShape &XmlTypes::shape(quint32 id, int depth)
{
    const auto known = shapes.constFind(id);
    if (known != shapes.constEnd())
        return *known;
    const auto type = types.constFind(id);
    if (type == types.constEnd() || depth == MaximumDepth)
        return none;
    shapes.insert(id, NetShape()); // That is what a type finds that contains itself.
    NetShape resolved = resolve(*type, depth);
    if (resolved.width > ModuleDefinition::MaximumSize)
        resolved = NetShape();
    return *shapes.insert(id, resolved);
}

static void makeVector(NetShape *shape, qint64 width)
{
    shape->width = width;
    shape->isBus = width > 0;
    shape->range = {qint32(qMin(width, ModuleDefinition::MaximumSize + 1) - 1), 0};
}

NetShape XmlTypes::resolve(const Type &type, int depth)
{
    NetShape result;
    switch (type.kind) {
    case Type::NoBits:
        break;
    case Type::Basic:
        result.width = type.hasRange ? type.range.size() : 1;
        result.isBus = type.hasRange;
        result.range = type.range;
        break;
    case Type::Alias:
        result = shape(type.element, depth + 1);
        break;
    case Type::Struct:
    case Type::Union: {
        qint64 width = 0;
        for (quint32 id : type.members) {
            const NetShape &member = shape(id, depth + 1);
            if (member.width == 0 || !member.dimensions.isEmpty())
                return NetShape();
            width = type.kind == Type::Struct ? width + member.width : qMax(width, member.width);
        }
        makeVector(&result, width);
        break;
    }
    case Type::Packed: {
        const NetShape &element = shape(type.element, depth + 1);
        if (element.width == 0 || !element.dimensions.isEmpty())
            break;
        const bool ofSingles = !element.isBus;
        makeVector(&result, element.width * type.range.size());
        if (ofSingles)
            result.range = type.range;
        break;
    }
    case Type::Unpacked:
        result = shape(type.element, depth + 1);
        if (result.width > 0)
            result.dimensions.prepend(type.range);
        break;
    }
    return result;
}

} // namespace Standin
