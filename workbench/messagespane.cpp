// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "messagespane.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace Workbench {

static constexpr int FileRole = Qt::UserRole;
static constexpr int LineRole = Qt::UserRole + 1;

// The log of a large design has many lines; more than this serves nobody.
static constexpr int MostLogLines = 20000;
static constexpr int MostProblems = 5000;

MessagesPane::MessagesPane(QWidget *parent)
    : QTabWidget(parent)
    , problems(new QTreeWidget(this))
    , log(new QPlainTextEdit(this))
{
    setDocumentMode(true);
    setTabPosition(QTabWidget::South);

    problems->setObjectName("problems");
    problems->setHeaderLabels({tr("Description"), tr("File"), tr("Line")});
    problems->setRootIsDecorated(false);
    problems->setUniformRowHeights(true);
    problems->setAllColumnsShowFocus(true);
    problems->setTextElideMode(Qt::ElideMiddle);
    problems->header()->setStretchLastSection(false);
    problems->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    problems->setColumnWidth(1, problems->fontMetrics().averageCharWidth() * 32);
    problems->setColumnWidth(2, problems->fontMetrics().averageCharWidth() * 9);
    connect(problems, &QTreeWidget::itemActivated, this, &MessagesPane::onItemActivated);

    log->setObjectName("log");
    log->setReadOnly(true);
    log->setMaximumBlockCount(MostLogLines);
    log->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    // Where room is short, the pages need it more.
    setMinimumHeight(fontMetrics().height() * 4);
    addTab(problems, tr("Problems"));
    addTab(log, tr("Log"));
}

static QTreeWidgetItem *makeProblemRow(const LogLine &line)
{
    auto *row = new QTreeWidgetItem;
    const bool isError = line.severity == LogLine::Error;
    row->setIcon(
        0, QIcon(QLatin1String(isError ? ":/workbench/error.png" : ":/workbench/warning.png")));
    row->setText(0, line.text);
    row->setToolTip(0, line.text);
    row->setText(1, QFileInfo(line.file).fileName());
    row->setToolTip(1, line.file);
    if (line.line > 0)
        row->setText(2, QString::number(line.line));
    row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    row->setData(0, FileRole, line.file);
    row->setData(0, LineRole, line.line);
    return row;
}

void MessagesPane::setDesignLog(const QStringList &lines)
{
    QList<QTreeWidgetItem *> rows;
    bool anyError = false;
    for (const QString &text : lines) {
        const LogLine line = parseLogLine(text);
        if (line.severity == LogLine::Information)
            continue;
        anyError = anyError || line.severity == LogLine::Error;
        if (rows.size() < MostProblems)
            rows.append(makeProblemRow(line));
    }

    problems->clear();
    problems->addTopLevelItems(rows);
    setTabText(0, rows.isEmpty() ? tr("Problems") : tr("Problems (%1)").arg(rows.size()));
    if (!lines.isEmpty())
        log->appendPlainText(lines.join('\n'));
    if (anyError)
        setCurrentWidget(problems);
}

void MessagesPane::appendLine(const QString &text)
{
    log->appendPlainText(text);
}

int MessagesPane::problemCount() const
{
    return problems->topLevelItemCount();
}

void MessagesPane::onItemActivated(QTreeWidgetItem *item)
{
    const QString file = item->data(0, FileRole).toString();
    if (!file.isEmpty())
        emit placeActivated(file, item->data(0, LineRole).toInt());
}

} // namespace Workbench
