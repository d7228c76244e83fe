// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/extractiondialog.h"

#include "frontend/progress.h"

#include <QLabel>

namespace Standin {

ExtractionDialog::ExtractionDialog(Progress *progressOfReading, int fileCount, int showAfter,
                                   QWidget *parent)
    : QProgressDialog(parent)
    , progress(progressOfReading)
    , files(fileCount)
    , stage("Reading the sources")
{
    setObjectName("extractionDialog");
    setWindowTitle("Reading the Design");
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(360);
    setAutoClose(false);
    setAutoReset(false);
    // How far a tool has come can't be told, so the bar only shows that something goes on.
    setRange(0, 0);
    setValue(0);
    // File names have no place in it, but what looks like markup must stay text all the same.
    const auto labels = findChildren<QLabel *>();
    for (QLabel *label : labels)
        label->setTextFormat(Qt::PlainText);

    connect(progress, SIGNAL(stageChanged(QString)), this, SLOT(onStageChanged(QString)));
    connect(this, SIGNAL(canceled()), progress, SLOT(cancel()));
    connect(&ticks, SIGNAL(timeout()), this, SLOT(onTick()));
    connect(&delay, SIGNAL(timeout()), this, SLOT(onDelayOver()));
    elapsed.start();
    ticks.start(250);
    delay.setSingleShot(true);
    updateText();
    if (showAfter > 0)
        delay.start(showAfter);
    else
        show();
}

ExtractionDialog::~ExtractionDialog()
{
    // Hiding counts as cancelling to the base class only when the user does it.
    disconnect(this, nullptr, progress, nullptr);
}

void ExtractionDialog::onStageChanged(const QString &text)
{
    stage = text;
    updateText();
}

void ExtractionDialog::onTick()
{
    updateText();
}

void ExtractionDialog::onDelayOver()
{
    if (!progress->isCancelled())
        show();
}

void ExtractionDialog::updateText()
{
    setLabelText(QString("%1...\n%2, %3 s")
                     .arg(stage, files == 1 ? QString("1 file") : QString("%1 files").arg(files))
                     .arg(elapsed.elapsed() / 1000));
}

} // namespace Standin
