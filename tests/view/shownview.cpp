// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "shownview.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace MOLK;

ShownView::ShownView(const ViewBench &bench, const QString &file)
    : page(new QWidget)
    , view(bench.openView(file).release())
{
    if (!view)
        return;
    view->setParent(page);
    page->resize(900, 600);
    view->resize(page->size());
    page->show();
}

ShownView::~ShownView()
{
    delete page;
}

QList<ReloadBanner *> ShownView::banners() const
{
    return view ? view->findChildren<ReloadBanner *>() : QList<ReloadBanner *>();
}

ReloadBanner *ShownView::banner() const
{
    return banners().value(0);
}

QString bannerText(const ReloadBanner *banner)
{
    return child<QLabel>(banner, "labelFile")->text();
}

void press(const ReloadBanner *banner, const QString &button)
{
    QTest::mouseClick(child<QPushButton>(banner, button), Qt::LeftButton);
}
