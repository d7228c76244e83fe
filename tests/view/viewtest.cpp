// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "viewtest.h"

#include <QTest>

using namespace MOLK;

ViewTest::ViewTest() = default;

ViewTest::~ViewTest() = default;

void ViewTest::init()
{
    bench = std::make_unique<ViewBench>();
}

void ViewTest::cleanup()
{
    shown.reset();
    view.reset();
    file.clear();
    bench.reset();
}

void ViewTest::newView()
{
    view = std::make_unique<MolkView>();
}

bool ViewTest::openFile(const QString &path)
{
    file = path;
    view = bench->openView(file);
    return view != nullptr;
}

bool ViewTest::openCores(int count)
{
    return openFile(bench->writeCores(count));
}

bool ViewTest::openActive(int count)
{
    if (!openCores(count))
        return false;
    view->show();
    return QTest::qWaitForWindowActive(view.get());
}

bool ViewTest::showFile(const QString &path)
{
    file = path;
    shown = std::make_unique<ShownView>(*bench, file);
    return shown->view != nullptr;
}

bool ViewTest::showCores(int count)
{
    return showFile(bench->writeCores(count));
}

private_impl::MolkViewPrivate *ViewTest::document() const
{
    return documentOf(shown ? shown->view.data() : view.get());
}
