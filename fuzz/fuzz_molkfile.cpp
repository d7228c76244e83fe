// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Bytes in: if they are accepted as a configuration, it must write, read back equal and write the
// same bytes again. Half of the inputs are made from others by changes of their structure.

#include "documentmutator.h"
#include "layoutreader.h"
#include "modellines.h"
#include "molkfilereader.h"
#include "molkfilewriter.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>
#include <cstring>

static QList<MOLK::MolkCore *> readByLayout(QByteArray *bytes, bool *ok)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::ReadOnly);
    MOLK::LayoutReader reader(&buffer);
    *ok = reader.read();
    return reader.takeCores();
}

static bool readAsXml(QByteArray *bytes, QList<MOLK::MolkCore *> *cores)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::ReadOnly);
    MOLK::MolkFileReader reader(&buffer);
    const bool accepted = reader.read();
    if (accepted != reader.error().isEmpty())
        std::abort();
    if (accepted)
        *cores = reader.takeCores();
    return accepted;
}

// Reading by the layout may accept less than reading as XML, but nothing else.
static bool read(QByteArray bytes, QList<MOLK::MolkCore *> *cores)
{
    const bool accepted = readAsXml(&bytes, cores);
    bool isLaidOut = false;
    const QList<MOLK::MolkCore *> same = readByLayout(&bytes, &isLaidOut);
    if (isLaidOut && (!accepted || modelLines(same) != modelLines(*cores)))
        std::abort();
    qDeleteAll(same);

    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QList<MOLK::MolkCore *> again;
    if (accepted != MOLK::readDocument(&buffer, &again).isEmpty())
        std::abort();
    qDeleteAll(again);
    return accepted;
}

static bool write(const QList<MOLK::MolkCore *> &cores, QByteArray *bytes)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    return MOLK::MolkFileWriter(&buffer).write(cores);
}

// A core that lost its ports in the file has got its first ones when it is read, so the first
// writing already has all that the second has.
static void checkRoundTrip(const QList<MOLK::MolkCore *> &cores)
{
    QByteArray first;
    QByteArray second;
    QList<MOLK::MolkCore *> back;
    if (!write(cores, &first) || !read(first, &back) || modelLines(back) != modelLines(cores))
        std::abort();
    bool isLaidOut = false;
    qDeleteAll(readByLayout(&first, &isLaidOut));
    if (!isLaidOut)
        std::abort();
    if (!write(back, &second) || second != first)
        std::abort();
    qDeleteAll(back);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QList<MOLK::MolkCore *> cores;
    if (read(QByteArray(reinterpret_cast<const char *>(data), int(size)), &cores))
        checkRoundTrip(cores);
    qDeleteAll(cores);
    return 0;
}

// libFuzzer's own way to change bytes; not there where the corpus is only replayed.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most)
    __attribute__((weak));

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    if (LLVMFuzzerMutate && seed % 2 != 0)
        return LLVMFuzzerMutate(data, size, most);
    const QByteArray changed =
        mutatedDocument(QByteArray(reinterpret_cast<const char *>(data), int(size)), seed / 2);
    if (changed.isEmpty() || std::size_t(changed.size()) > most)
        return LLVMFuzzerMutate ? LLVMFuzzerMutate(data, size, most) : size;
    std::memcpy(data, changed.constData(), std::size_t(changed.size()));
    return std::size_t(changed.size());
}
