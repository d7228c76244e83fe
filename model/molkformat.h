// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1String>
#include <QtGlobal>

/// The words and bounds of the configuration file, shared by its reader and its writer. What they
/// mean is told in docs/file-format.md.
namespace MOLK::Format {

// Not every compiler can count a literal's characters for QLatin1String at compile time.
template<int size>
constexpr QLatin1String word(const char (&literal)[size])
{
    return QLatin1String(literal, size - 1);
}

constexpr QLatin1String declaration = word("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
constexpr int indentation = 4; // Blanks a level.

constexpr QLatin1String rootElement = word("MOLK_CONFIG");
constexpr QLatin1String versionElement = word("Version");
constexpr QLatin1String version = word("1.0");

constexpr QLatin1String coreElement = word("core");
constexpr QLatin1String idAttribute = word("id");
constexpr QLatin1String moduleAttribute = word("module");
constexpr QLatin1String userClockAttribute = word("userClock");
constexpr QLatin1String useUserClockAttribute = word("useUserClock");

constexpr QLatin1String probeInElement = word("probeIn");
constexpr QLatin1String probeOutElement = word("probeOut");
constexpr QLatin1String numberAttribute = word("number");
constexpr QLatin1String valueAttribute = word("value");
constexpr QLatin1String defaultValue = word("0x0");

// The element of a signal tells its kind; only what has no element of its own needs the attribute.
constexpr QLatin1String netElement = word("net");
constexpr QLatin1String busElement = word("bus");
constexpr QLatin1String bitElement = word("bit");
constexpr QLatin1String signalElement = word("signal");
constexpr QLatin1String kindAttribute = word("kind");
constexpr QLatin1String nameAttribute = word("name");
constexpr QLatin1String aliasAttribute = word("alias");
constexpr QLatin1String selectableAttribute = word("selectable");
constexpr QLatin1String foundAttribute = word("found");

constexpr QLatin1String trueWord = word("true");
constexpr QLatin1String falseWord = word("false");

constexpr int netKind = 0;
constexpr int busKind = 1;
constexpr int unsetKind = -1;

struct SignalElement
{
    QLatin1String element;
    int kind;
};

/// The elements of signals, with the kind that each stands for unless it has an attribute for it.
constexpr SignalElement signalElements[] = {
    {netElement, netKind},
    {busElement, busKind},
    {bitElement, busKind},
    {signalElement, unsetKind},
};

/// How deep members may lie in members below a port's own items.
constexpr int maximumNesting = 16;

/// A file of more bytes is neither read nor written.
constexpr qint64 maximumFileSize = qint64(256) * 1024 * 1024;

/// A tag, comment or run of text of more bytes is neither read nor written.
constexpr qint64 maximumPieceSize = 1024 * 1024;

/// A name or other text of more code units is neither read nor written. An element has two of them
/// at most, so that it keeps below the bound of a tag even if every character has to be escaped.
constexpr int maximumTextLength = 64 * 1024;

/// No element of the format has more than five attributes.
constexpr int maximumAttributes = 64;

} // namespace MOLK::Format
