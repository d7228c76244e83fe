// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "molkinserterplugin.h"
#include "molkview.h"
#include "molkviewmanager.h"
#include "viewbench.h"

#include <QAction>
#include <QObject>

#include <memory>

/// A view of the host's that isn't the plug-in's.
class OtherView : public Core::IView
{
};

/// Base of the tests of the view manager. There is one manager in the process and it is brought up
/// once, so all test functions share it and its host, and leave no view behind.
class ManagerTest : public QObject
{
    Q_OBJECT

protected:
    ManagerTest();
    ~ManagerTest() override;

    static MOLK::MolkViewManager *manager() { return MOLK::MolkViewManager::instance(); }

    /// The one action of the manager; null before it is brought up.
    static QAction *saveAction() { return manager()->findChild<QAction *>(); }

    /// The Save action in one line: its two texts and whether it is enabled.
    static QString actionState();

    /// Opens a view of \a file through the manager; null if that gave no new one.
    static MOLK::MolkView *open(const QString &file);

    std::unique_ptr<ViewBench> bench;

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

private:
    std::unique_ptr<MOLK::MolkInserterPlugin> plugin;
};
