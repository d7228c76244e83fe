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

static const DocumentVocabulary &vocabulary()
{
    static const DocumentVocabulary words = {
        {"MOLK_CONFIG", "Version",      "core",   "probeIn", "probeOut", "net",
         "bus",         "bit",          "signal", "id",      "module",   "userClock",
         "number",      "useUserClock", "value",  "name",    "alias",    "selectable",
         "found",       "kind",         "x",      "xmlns",   "a:b"},
        {"",
         "0",
         "-1",
         "1",
         "63",
         "64",
         "2147483647",
         "2147483648",
         "-2147483648",
         "01",
         "+1",
         " 1",
         "1.0",
         "2.0",
         "true",
         "false",
         "True",
         "0x0",
         "0xFF",
         "0x0123456789ABCDEF",
         "top/u0/clk",
         "q[7:0]",
         "\\u0000",
         "\\u005C",
         "\\",
         "\\uD800",
         "a\tb\nc\rd",
         "<&>\"'",
         QString(300, QLatin1Char('n')),
         QString::fromUtf8("\xC3\xA4\xF0\x9F\x92\xA1")}};
    return words;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return mutateDocument(data, size, most, seed, vocabulary());
}
