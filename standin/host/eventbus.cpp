// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "host/eventbus.h"

#include "host/calllog.h"
#include "host/event.h"

#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"

#include <QHash>
#include <QVector>

namespace {

// A subscription is known by a number of its own, not by the handler's address: a handler that is
// made during a delivery may lie where one that was destroyed in it has been.
struct Subscription
{
    QUtil::IEventHandler *handler = nullptr;
    quint64 number = 0;
};

struct Topic
{
    QVector<Subscription> inOrder;
    QHash<QUtil::IEventHandler *, quint64> numbers;
};

struct Subscriptions
{
    QHash<QString, Topic> topics;
    quint64 lastNumber = 0;
};

} // namespace

// Never destroyed, so that a handler may still unsubscribe while static objects are destroyed.
static Subscriptions &subscriptions()
{
    static auto *all = new Subscriptions;
    return *all;
}

static void removeFrom(Topic &topic, QUtil::IEventHandler *handler)
{
    const quint64 number = topic.numbers.take(handler);
    if (number == 0)
        return;
    for (int i = 0; i < topic.inOrder.size(); ++i) {
        if (topic.inOrder.at(i).number == number) {
            topic.inOrder.remove(i);
            return;
        }
    }
}

namespace QUtil {

EventManager *EventManager::instance()
{
    static EventManager manager;
    return &manager;
}

void EventManager::subscribe(IEventHandler *handler, const QString &eventName)
{
    Standin::record("subscribe " + eventName);
    if (!handler)
        return;

    Subscriptions &all = subscriptions();
    Topic &topic = all.topics[eventName];
    if (topic.numbers.contains(handler))
        return;

    ++all.lastNumber;
    topic.inOrder.append({handler, all.lastNumber});
    topic.numbers.insert(handler, all.lastNumber);
}

void EventManager::unsubscribe(IEventHandler *handler, const QString &eventName)
{
    Standin::record("unsubscribe " + eventName);
    auto &topics = subscriptions().topics;
    const auto topic = topics.find(eventName);
    if (topic != topics.end())
        removeFrom(*topic, handler);
}

void EventManager::unsubscribeAll(IEventHandler *handler)
{
    Standin::record("unsubscribeAll");
    for (Topic &topic : subscriptions().topics)
        removeFrom(topic, handler);
}

} // namespace QUtil

namespace Standin {

EventBus *EventBus::instance()
{
    static EventBus bus;
    return &bus;
}

void EventBus::send(const Event &event)
{
    record("send " + event.toString());

    const QString name = event.type();
    const QVector<Subscription> receivers = subscriptions().topics.value(name).inOrder;
    for (const Subscription &receiver : receivers) {
        const auto &topics = subscriptions().topics;
        const auto topic = topics.constFind(name);
        if (topic != topics.cend() && topic->numbers.value(receiver.handler) == receiver.number)
            receiver.handler->handleIEvent(&event);
    }
}

int EventBus::subscriptionCount() const
{
    int count = 0;
    for (const Topic &topic : qAsConst(subscriptions().topics))
        count += topic.inOrder.size();
    return count;
}

} // namespace Standin
