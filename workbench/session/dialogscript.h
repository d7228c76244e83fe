// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "windowwatch.h"

#include <QList>
#include <QString>

#include <functional>

/// Answers the modal windows of a scripted session, in the order in which they are expected.
///
/// An answer runs inside the event loop of its window, as soon as that window is shown and has the
/// focus, and has to end it; a window that is open after it is a surprise. Answers may expect
/// further windows, which then nest. Progress dialogs come and go by themselves and are let be.
class DialogScript : public WindowWatch
{
    Q_OBJECT

public:
    using Answer = std::function<void(QWidget *window)>;

    /// \param onSurprise called with a description of each window that nobody expects, which is
    ///        then closed.
    explicit DialogScript(const std::function<void(const QString &)> &onSurprise);

    /// Expects a modal window with the object name or the class name \a name next.
    void expect(const QString &name, const Answer &answer);

    /// What was expected and hasn't come.
    QString missing() const;

protected:
    bool asks(const QWidget *window) const override { return isQuestion(window); }
    void meet(QWidget *window) override;

private:
    struct Step
    {
        QString name;
        Answer answer;
    };

    void dismiss(QWidget *window, const QString &why);

    std::function<void(const QString &)> surprise;
    QList<Step> steps;
};
