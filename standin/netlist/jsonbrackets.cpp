// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/jsonbrackets.h"

#include <algorithm>
#include <vector>

namespace Standin {

// No netlist nests more than a dozen levels; the parser ends at this number too.
static constexpr std::size_t MaximumDepth = 1024;

QString placeInText(std::string_view text, std::size_t offset)
{
    const std::string_view ahead = text.substr(0, std::min(offset, text.size()));
    const auto line = std::count(ahead.begin(), ahead.end(), '\n') + 1;
    const auto newline = ahead.rfind('\n');
    const std::size_t begin = newline == std::string_view::npos ? 0 : newline + 1;
    return QStringLiteral("%1:%2").arg(line).arg(ahead.size() - begin + 1);
}

static QString unendedAt(std::string_view text, const char *what, std::size_t begin)
{
    const QString place = placeInText(text, begin);
    return placeInText(text, text.size())
        + QStringLiteral(": The file ends within the %1 that begins in line %2")
              .arg(QLatin1String(what), place.left(place.indexOf(QLatin1Char(':'))));
}

/// Offset behind the string that begins at \a begin, or npos.
static std::size_t behindString(std::string_view text, std::size_t begin)
{
    std::size_t at = text.find_first_of("\"\\", begin + 1);
    while (at != std::string_view::npos && text[at] == '\\')
        at = at + 2 < text.size() ? text.find_first_of("\"\\", at + 2) : std::string_view::npos;
    return at == std::string_view::npos ? at : at + 1;
}

QString faultOfJsonBrackets(std::string_view text)
{
    std::vector<std::size_t> open;
    const auto end = text.size();
    for (std::size_t at = 0; at < end; ++at) {
        const char c = text[at];
        if (c == '"') {
            const std::size_t behind = behindString(text, at);
            if (behind == std::string_view::npos)
                return unendedAt(text, "text", at);
            at = behind - 1;
        } else if (c == '{' || c == '[') {
            if (open.size() == MaximumDepth)
                return placeInText(text, at) + QStringLiteral(": The file is nested too deeply");
            open.push_back(at);
        } else if (c == '}' || c == ']') {
            if (open.empty() || text[open.back()] != (c == '}' ? '{' : '['))
                return placeInText(text, at)
                    + QStringLiteral(": There is no bracket that \"%1\" could close")
                          .arg(QLatin1Char(c));
            open.pop_back();
            if (!open.empty())
                continue;
            const std::size_t rest = text.find_first_not_of(" \t\r\n", at + 1);
            return rest == std::string_view::npos ? QString()
                                                  : placeInText(text, rest)
                    + QStringLiteral(": There is something behind the netlist's end");
        }
    }
    if (open.empty())
        return QString();
    return unendedAt(text, text[open.back()] == '{' ? "object" : "list", open.back());
}

} // namespace Standin
