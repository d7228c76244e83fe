// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "elfsection.h"

#include <QFile>

#include <cstring>
#include <elf.h>

// A copy of the \a Type at \a offset, all zero if it lies outside.
template<typename Type>
static Type structAt(const QByteArray &image, quint64 offset)
{
    Type value = {};
    if (offset + sizeof(Type) <= quint64(image.size()))
        std::memcpy(&value, image.constData() + offset, sizeof(Type));
    return value;
}

QList<QByteArray> elfSections(const QString &file, const QByteArray &name)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        return {};
    const QByteArray image = opened.readAll();
    if (!image.startsWith(ELFMAG) || image.size() < int(sizeof(Elf64_Ehdr))
        || image.at(EI_CLASS) != ELFCLASS64)
        return {};

    const auto header = structAt<Elf64_Ehdr>(image, 0);
    const auto sectionAt = [&](int index) {
        return structAt<Elf64_Shdr>(image, header.e_shoff + quint64(index) * header.e_shentsize);
    };
    const Elf64_Shdr names = sectionAt(header.e_shstrndx);
    QList<QByteArray> found;
    for (int i = 0; i < header.e_shnum; ++i) {
        const Elf64_Shdr section = sectionAt(i);
        const int nameOffset = int(names.sh_offset + section.sh_name);
        if (nameOffset < image.size() && name == image.constData() + nameOffset)
            found.append(image.mid(int(section.sh_offset), int(section.sh_size)));
    }
    return found;
}
