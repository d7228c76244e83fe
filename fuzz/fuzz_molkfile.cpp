// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Bytes in: if they are accepted as a configuration, it must write, read back equal and write the
// same bytes again.

#include "modellines.h"
#include "molkcore.h"
#include "molkfilereader.h"
#include "molkfilewriter.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

static bool accepts(QByteArray *bytes, MOLK::Indentation indentation)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::ReadOnly);
    MOLK::MolkFileReader reader(&buffer, indentation);
    const bool accepted = reader.read();
    if (accepted != reader.error().isEmpty())
        std::abort();
    return accepted;
}

// Both ways to read have to agree on what a configuration is.
static bool read(QByteArray bytes, QList<MOLK::MolkCore *> *cores)
{
    const bool accepted = accepts(&bytes, MOLK::Indentation::Kept);
    if (accepted != accepts(&bytes, MOLK::Indentation::Dropped))
        std::abort();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    if (accepted != MOLK::readDocument(&buffer, cores).isEmpty())
        std::abort();
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
