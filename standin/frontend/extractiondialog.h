// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QTimer>

namespace Standin {

class Progress;

/// Shows what a reading does, of how many files and for how long, and cancels it. Its object name
/// is "extractionDialog".
class ExtractionDialog : public QProgressDialog
{
    Q_OBJECT

public:
    /// \param progress must outlive the dialog.
    /// \param showAfter milliseconds until it shows itself; short readings don't flash a window.
    ExtractionDialog(Progress *progress, int fileCount, int showAfter, QWidget *parent);
    ~ExtractionDialog() override;

private slots:
    void onStageChanged(const QString &text);
    void onTick();
    void onDelayOver();

private:
    void updateText();

    Progress *progress;
    int files;
    QString stage;
    QElapsedTimer elapsed;
    QTimer ticks;
    QTimer delay;
};

} // namespace Standin
