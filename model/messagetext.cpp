// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagetext.h"

namespace MOLK {

static const int wordLength = 60;
static const QChar bracketLookAlike(0x2039);

QString messageText(const QStringRef &text, int length)
{
    QString shown = text.left(length).toString();
    for (QChar &character : shown) {
        if (character == QLatin1Char('<'))
            character = bracketLookAlike;
        else if (!character.isPrint() && !character.isSurrogate())
            character = QLatin1Char('?');
    }
    if (text.size() > length)
        shown += "...";
    return shown;
}

QString quotedWord(const QStringRef &word)
{
    return '"' + messageText(word, wordLength) + '"';
}

} // namespace MOLK
