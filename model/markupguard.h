// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "utf8check.h"

#include <QString>
#include <QtGlobal>

namespace MOLK {

/// Follows the markup of an XML document byte by byte and stops it where it would cost a parser
/// time or memory out of all proportion: a piece of markup or text that never ends, an element with
/// thousands of attributes, a document type with its entities, a document that is too large or
/// isn't UTF-8.
///
/// Both directions go through it, so that nothing is written that would be refused when read. It
/// judges nothing else: whether a document is well formed is the parser's business.
class MarkupGuard
{
public:
    /// Takes the next \a size bytes of the document.
    ///
    /// \return how many of them may be passed on: \a size, or less where the document is stopped.
    ///         Nothing is taken any more from then on.
    qint64 accept(const char *data, qint64 size);

    /// Says that the document ends here.
    void finish();

    /// Why the document was stopped, as the end of a sentence; empty while it wasn't.
    QString fault() const { return cause; }

private:
    enum class State { Text, Opened, Declared, Tag, Value, Comment, CharacterData, Instruction };

    const char *step(const char *at, const char *end);
    const char *stepText(const char *at, const char *end);
    const char *stepOpened(const char *at);
    const char *stepDeclared(const char *at);
    const char *stepTag(const char *at, const char *end);
    const char *stepValue(const char *at, const char *end);
    const char *stepClosed(const char *at, const char *end, char closing, qint64 shortest);
    void enter(State next);

    QString cause;
    Utf8Check encoding;
    qint64 total = 0;
    qint64 pieceSize =
        0; // Bytes of the current tag, comment or run of text, without its first `<`.
    State state = State::Text;
    bool entered = false;  // The last step began a new piece.
    int attributes = 0;    // Values met in the current tag.
    char quote = 0;        // What ends the current value.
    char last[2] = {0, 0}; // The two bytes before the next one, the nearer one second.
};

} // namespace MOLK
