// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "markupguard.h"

#include "molkformat.h"

#include <cstring>

namespace MOLK {

// The first such byte, or the end.
static const char *find(const char *at, const char *end, char byte)
{
    const void *const found = std::memchr(at, byte, std::size_t(end - at));
    return found ? static_cast<const char *>(found) : end;
}

qint64 MarkupGuard::accept(const char *data, qint64 size)
{
    if (!cause.isEmpty() || size <= 0)
        return 0;

    const char *end = data + qMin(size, Format::maximumFileSize - total);
    const char *const nul = find(data, end, '\0');
    const char *const invalid = encoding.firstInvalid(data, nul);
    const QString causeAtEnd = invalid != nul ? QString("bytes that aren't text in UTF-8")
        : nul != end                          ? QString("a NUL byte, which isn't text")
        : end != data + size ? QString("more than %1 bytes").arg(Format::maximumFileSize)
                             : QString();
    end = invalid;

    const char *at = data;
    while (at != end && cause.isEmpty()) {
        const bool inText = state == State::Text;
        entered = false;
        const char *const next = step(at, end);
        const qint64 reached = pieceSize + (next - at);
        // A text ends before the bracket that was stepped over, all else with it.
        const bool isTooLong = reached > Format::maximumPieceSize && !(inText && entered);
        pieceSize = entered ? 0 : reached;
        if (next - at > 1)
            last[0] = next[-2];
        else if (next != at)
            last[0] = last[1];
        if (next != at)
            last[1] = next[-1];
        at = next;
        if (isTooLong) {
            cause = QString("a tag, comment or text of more than %1 bytes")
                        .arg(Format::maximumPieceSize);
        }
    }

    total += at - data;
    if (cause.isEmpty())
        cause = causeAtEnd;
    return at - data;
}

void MarkupGuard::finish()
{
    if (cause.isEmpty() && !encoding.isComplete())
        cause = "a character that is cut off by the end of the file";
}

const char *MarkupGuard::step(const char *at, const char *end)
{
    switch (state) {
    case State::Text:
        return stepText(at, end);
    case State::Opened:
        return stepOpened(at);
    case State::Declared:
        return stepDeclared(at);
    case State::Tag:
        return stepTag(at, end);
    case State::Value:
        return stepValue(at, end);
    case State::Comment:
        return stepClosed(at, end, '-', 6);
    case State::CharacterData:
        return stepClosed(at, end, ']', 11);
    case State::Instruction:
        break;
    }
    return stepClosed(at, end, '?', 3);
}

const char *MarkupGuard::stepText(const char *at, const char *end)
{
    if (*at != '<')
        return find(at, end, '<');
    enter(State::Opened);
    return at + 1;
}

const char *MarkupGuard::stepOpened(const char *at)
{
    if (*at == '!') {
        state = State::Declared;
        return at + 1;
    }
    // Whatever else stands here belongs to a tag and is looked at there.
    state = *at == '?' ? State::Instruction : State::Tag;
    return at;
}

const char *MarkupGuard::stepDeclared(const char *at)
{
    if (*at == '-')
        state = State::Comment;
    else if (*at == '[')
        state = State::CharacterData;
    else
        cause = "document types aren't accepted";
    return at;
}

const char *MarkupGuard::stepTag(const char *at, const char *end)
{
    for (; at != end; ++at) {
        if (*at == '>') {
            enter(State::Text);
            return at + 1;
        }
        if (*at != '"' && *at != '\'')
            continue;
        if (++attributes > Format::maximumAttributes) {
            cause =
                QString("an element with more than %1 attributes").arg(Format::maximumAttributes);
            return at;
        }
        quote = *at;
        state = State::Value;
        return at + 1;
    }
    return at;
}

const char *MarkupGuard::stepValue(const char *at, const char *end)
{
    const char *const closing = find(at, end, quote);
    if (closing == end)
        return end;
    state = State::Tag;
    return closing + 1;
}

// Comments, character data and instructions end with a `>` behind one or two bytes of a kind. The
// shortest whole one, not counting its first `<`, keeps an opening from closing itself: `<!-->`.
const char *MarkupGuard::stepClosed(const char *at, const char *end, char closing, qint64 shortest)
{
    const char *const bracket = find(at, end, '>');
    if (bracket == end)
        return end;
    const char near = bracket - at >= 1 ? bracket[-1] : last[1];
    const char far = bracket - at >= 2 ? bracket[-2] : bracket - at == 1 ? last[1] : last[0];
    const bool closes = near == closing && (closing == '?' || far == closing);
    if (closes && pieceSize + (bracket + 1 - at) >= shortest)
        enter(State::Text);
    return bracket + 1;
}

void MarkupGuard::enter(State next)
{
    state = next;
    attributes = 0;
    entered = true;
}

} // namespace MOLK
