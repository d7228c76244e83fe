// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "diskchanges.h"

#include "shownview.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cstdio>

using namespace MOLK;

QString changedText(const QString &file)
{
    return "The file '" + QDir::toNativeSeparators(file)
        + "' changed on disk.\nDo you want to reload?";
}

QString removedText(const QString &file)
{
    return "The file '" + QDir::toNativeSeparators(file)
        + "' has been removed on disk.\nDo you still want to keep it?";
}

void append(const QString &file, const QByteArray &bytes)
{
    QFile opened(file);
    if (!opened.open(QIODevice::Append) || opened.write(bytes) != bytes.size())
        QTest::qFail("can't append", __FILE__, __LINE__);
}

void replace(const QString &file, const QByteArray &bytes)
{
    QFile next(file + ".new");
    if (!next.open(QIODevice::WriteOnly) || next.write(bytes) != bytes.size())
        QTest::qFail("can't write", __FILE__, __LINE__);
    next.close();
    if (std::rename(QFile::encodeName(next.fileName()), QFile::encodeName(file)) != 0)
        QTest::qFail("can't rename", __FILE__, __LINE__);
}

ReloadBanner *raiseBanner(const ShownView &shown)
{
    documentOf(shown.view)->reloadPending = true;
    shown.view->checkForReload();
    return shown.banner();
}
