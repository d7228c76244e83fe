// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPlainTextEdit>

namespace Workbench {

/// A read-only text with line numbers at its left, and a mark on the line of the cursor.
class SourceText : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit SourceText(QWidget *parent = nullptr);

    /// Paints the numbers of the lines that \a event uncovers in the strip at the left.
    void paintNumbers(QPaintEvent *event);

    /// Width that the strip needs for the number of the last line.
    int numbersWidth() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void placeNumbers();
    void scrollNumbers(const QRect &area, int dy);
    void markCurrentLine();

    QWidget *numbers;
};

} // namespace Workbench
