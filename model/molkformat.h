// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1String>
#include <QtGlobal>

/// The words and bounds of the configuration file, shared by its reader and its writer. What they
/// mean is told in docs/file-format.md.
namespace MOLK::Format {

constexpr QLatin1String rootElement("MOLK_CONFIG");
constexpr QLatin1String versionElement("Version");
constexpr QLatin1String version("1.0");

constexpr QLatin1String coreElement("core");
constexpr QLatin1String idAttribute("id");
constexpr QLatin1String moduleAttribute("module");
constexpr QLatin1String userClockAttribute("userClock");
constexpr QLatin1String useUserClockAttribute("useUserClock");

constexpr QLatin1String probeInElement("probeIn");
constexpr QLatin1String probeOutElement("probeOut");
constexpr QLatin1String numberAttribute("number");
constexpr QLatin1String valueAttribute("value");
constexpr QLatin1String defaultValue("0x0");

// The element of a signal tells its kind; only what has no element of its own needs the attribute.
constexpr QLatin1String netElement("net");
constexpr QLatin1String busElement("bus");
constexpr QLatin1String bitElement("bit");
constexpr QLatin1String signalElement("signal");
constexpr QLatin1String kindAttribute("kind");
constexpr QLatin1String nameAttribute("name");
constexpr QLatin1String aliasAttribute("alias");
constexpr QLatin1String selectableAttribute("selectable");
constexpr QLatin1String foundAttribute("found");

constexpr QLatin1String trueWord("true");
constexpr QLatin1String falseWord("false");

constexpr int netKind = 0;
constexpr int busKind = 1;
constexpr int unsetKind = -1;

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
