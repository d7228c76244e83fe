// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "host/host.h"

#include "core/iview.h"

#include <QStringList>

#include <functional>
#include <memory>

class QCloseEvent;
class QTabWidget;

/// A view that says what happens to it, and does what a test tells it to.
class TestView : public Core::IView
{
    Q_OBJECT

public:
    TestView(const QString &title, QStringList *newsList);
    ~TestView() override;

    void onActivated() override;
    void onDeactivated() override;

    std::function<void(QCloseEvent *)> whenClosing;
    std::function<void()> whenActivated;

public slots:
    /// What a plug-in's view does when it must go without a question.
    void closeFromInside();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QStringList *news;
};

/// Writes down the view manager's signals among the views' own news.
class SignalNews : public QObject
{
    Q_OBJECT

public:
    explicit SignalNews(QStringList *newsList);

private slots:
    void onActivated(Core::IView *view);
    void onClosed(Core::IView *view);

private:
    QStringList *news;
};

/// Base of the tests of the host's views. Each test function begins with a fresh host and without
/// news.
class HostViewTest : public QObject
{
    Q_OBJECT

protected:
    /// Shows a new view, which belongs to the host.
    TestView *show(const QString &title);

    QTabWidget *tabs() const;

    /// Deletes what waits to be deleted.
    static void turnEventLoop();

    std::unique_ptr<Standin::Host> host;
    QStringList news; ///< What happened, one line each, as "activated a".

private slots:
    void init();
    void cleanup();
};
