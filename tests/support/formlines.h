// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QTranslator>

class QWidget;

/// What lies on \a root, one line an object, in the order in which layouts and splitters place it,
/// indented by two blanks a level:
///
/// - a layout: class and name, and the margins (left, top, right, bottom) where one is 0;
/// - a widget: class and name, its text or title, the look of a frame;
/// - a spacer: its size and its policies;
///
/// ahead of what stands in a grid its row and column, with the number of columns if it has several.
/// Widgets that Qt makes for its own, those without a name, are left out.
QStringList formLines(const QWidget *root);

/// Notes the texts that are looked up for translation while it lives.
class TranslatedTexts : public QTranslator
{
public:
    TranslatedTexts();
    ~TranslatedTexts() override;

    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }

    /// The texts of \a context in the order of their look-ups.
    QStringList textsOf(const QString &context) const;

private:
    struct Text
    {
        QString context;
        QString text;
    };
    mutable QList<Text> texts;
};
