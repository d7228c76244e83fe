// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "sourceview.h"

#include "sourcetext.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

namespace Workbench {

static constexpr qint64 MostBytes = qint64(64) << 20;

SourceView::SourceView(QWidget *parent)
    : Core::IView(parent)
    , text(new SourceText(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text);
    setFocusProxy(text);
}

bool SourceView::open(const QString &fileName, QString *error)
{
    const QFileInfo info(fileName);
    const QString shown = QDir::toNativeSeparators(info.absoluteFilePath());

    // A pipe or a device would be waited for.
    if (!info.isFile()) {
        *error = info.exists() ? tr("%1 is no regular file.").arg(shown)
                               : tr("%1 does not exist.").arg(shown);
        return false;
    }
    if (info.size() > MostBytes) {
        *error = tr("%1 is longer than 64 MiB.").arg(shown);
        return false;
    }
    QFile file(info.absoluteFilePath());
    if (!file.open(QIODevice::ReadOnly)) {
        *error = tr("%1 can not be read: %2").arg(shown, file.errorString());
        return false;
    }

    text->setPlainText(QString::fromUtf8(file.read(MostBytes)));
    path = info.absoluteFilePath();
    setWindowTitle(info.fileName());
    setShortTitle(info.fileName());
    return true;
}

QString SourceView::file() const
{
    return path;
}

void SourceView::showLine(int line)
{
    const QTextBlock block = text->document()->findBlockByNumber(line - 1);
    if (!block.isValid())
        return;
    text->setTextCursor(QTextCursor(block));
    text->centerCursor();
}

int SourceView::currentLine() const
{
    return text->textCursor().blockNumber() + 1;
}

} // namespace Workbench
