// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace MOLK {

/// A text that is looked for in many names.
///
/// The answers are those of QString::indexOf(), several times as fast: eight places of a name are
/// tried at once. What that doesn't cover goes to QString::indexOf() itself.
class LiteralMatcher
{
public:
    /// Looks for an empty text.
    LiteralMatcher() = default;

    /// \param text taken literally.
    LiteralMatcher(const QString &text, Qt::CaseSensitivity caseSensitivity);

    /// Whether the text occurs in \a name. An empty text occurs in every name.
    bool isIn(const QString &name) const;

    enum class Answer {
        Yes,
        No,
        NotAscii, ///< It isn't there as far as ASCII goes, but the name holds other characters.
    };

    /// As isIn() for names of ASCII characters; a name with other characters may be told apart.
    Answer lookInAscii(const QString &name) const;

private:
    QString literal;
    QString folded; ///< The literal as it is compared: in lower case unless case counts.
    Qt::CaseSensitivity sensitivity = Qt::CaseSensitive;
    bool covered = false; ///< False if QString::indexOf() has to do the work.
};

} // namespace MOLK
