// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "testmain.h"

#include "host/event.h"
#include "host/eventbus.h"

#include "qutil/eventmanager.h"
#include "qutil/ieventhandler.h"

#include <functional>
#include <memory>

using QUtil::EventManager;
using Standin::Event;
using Standin::EventBus;

class TestHostEvents : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void eventAnswersNameAndValues();
    void eventIsWrittenWithItsValuesInOrderOfKeys();
    void handlersHearInOrderOfSubscription();
    void handlersHearTheirNamesOnly();
    void namesAreCaseSensitive();
    void secondSubscriptionChangesNothing();
    void unsubscribingTwiceIsHarmless();
    void unsubscribeAllEndsEveryName();
    void handlerMayUnsubscribeItself();
    void handlerMayUnsubscribeAnotherThatIsDue();
    void handlerMayDestroyItself();
    void handlerMayDestroyAnotherThatIsDue();
    void newHandlerHearsFromTheNextEventOn();
    void handlerMadeWhereADeadOneWasDoesNotHearItsEvent();
    void handlerMayRenewItsSubscription();
    void handlerMaySendAnEvent();
    void busWorksWithoutAHost();

private:
    QStringList heard;
};

/// Writes down what it hears, and may do something then.
class Handler : public QUtil::IEventHandler
{
public:
    /// \param events names that it subscribes to, in this order.
    Handler(const QString &handlerName, QStringList *list, const QStringList &events = {})
        : name(handlerName)
        , heard(list)
    {
        for (const QString &event : events)
            EventManager::instance()->subscribe(this, event);
    }

    ~Handler() override { EventManager::instance()->unsubscribeAll(this); }

    void handleIEvent(const QUtil::IEvent *event) override
    {
        heard->append(name + ":" + event->type());
        // A copy, since what it does may destroy this object.
        const std::function<void()> act = then;
        if (act)
            act();
    }

    std::function<void()> then;

private:
    QString name;
    QStringList *heard;
};

static void subscribe(Handler &handler, const QString &name)
{
    EventManager::instance()->subscribe(&handler, name);
}

static void send(const QString &name)
{
    EventBus::instance()->send(Event(name));
}

void TestHostEvents::cleanup()
{
    heard.clear();
}

void TestHostEvents::eventAnswersNameAndValues()
{
    const Event event("TE.File.Remove", {{"type", 2}, {"enable", true}});

    QCOMPARE(event.type(), QString("TE.File.Remove"));
    QCOMPARE(event.get("type"), QVariant(2));
    QCOMPARE(event.get("enable"), QVariant(true));
    QVERIFY(!event.get("file").isValid());
    QVERIFY(!Event("x").get("type").isValid());
}

void TestHostEvents::eventIsWrittenWithItsValuesInOrderOfKeys()
{
    QCOMPARE(Event("TE.Device.Change").toString(), QString("TE.Device.Change"));
    QCOMPARE(Event("TE.File.Remove", {{"type", 2}, {"enable", false}}).toString(),
             QString("TE.File.Remove enable=false type=2"));
}

void TestHostEvents::handlersHearInOrderOfSubscription()
{
    Handler b("b", &heard);
    Handler a("a", &heard);
    Handler c("c", &heard);
    subscribe(c, "x");
    subscribe(a, "x");
    subscribe(b, "x");

    send("x");

    QCOMPARE(heard, QStringList({"c:x", "a:x", "b:x"}));
}

void TestHostEvents::handlersHearTheirNamesOnly()
{
    Handler a("a", &heard, {"x", "y"});
    Handler b("b", &heard, {"y"});

    send("x");
    send("y");
    send("z");

    QCOMPARE(heard, QStringList({"a:x", "a:y", "b:y"}));
}

void TestHostEvents::namesAreCaseSensitive()
{
    Handler a("a", &heard, {"TE.File.Add"});

    send("te.file.add");

    QCOMPARE(heard, QStringList());
}

void TestHostEvents::secondSubscriptionChangesNothing()
{
    Handler a("a", &heard);
    Handler b("b", &heard);
    subscribe(a, "x");
    subscribe(b, "x");
    subscribe(a, "x");

    send("x");
    QCOMPARE(heard, QStringList({"a:x", "b:x"}));

    heard.clear();
    EventManager::instance()->unsubscribe(&a, "x");
    send("x");
    QCOMPARE(heard, QStringList({"b:x"}));
}

void TestHostEvents::unsubscribingTwiceIsHarmless()
{
    Handler a("a", &heard);
    EventManager::instance()->unsubscribe(&a, "x");
    subscribe(a, "x");
    EventManager::instance()->unsubscribe(&a, "x");
    EventManager::instance()->unsubscribe(&a, "x");
    EventManager::instance()->unsubscribe(&a, "y");

    send("x");

    QCOMPARE(heard, QStringList());
}

void TestHostEvents::unsubscribeAllEndsEveryName()
{
    Handler a("a", &heard, {"x", "y"});
    Handler b("b", &heard, {"x"});

    EventManager::instance()->unsubscribeAll(&a);
    send("x");
    send("y");

    QCOMPARE(heard, QStringList({"b:x"}));
}

void TestHostEvents::handlerMayUnsubscribeItself()
{
    Handler a("a", &heard, {"x"});
    Handler b("b", &heard, {"x"});
    a.then = [&a] {
        EventManager::instance()->unsubscribe(&a, "x");
    };

    send("x");
    send("x");

    QCOMPARE(heard, QStringList({"a:x", "b:x", "b:x"}));
}

void TestHostEvents::handlerMayUnsubscribeAnotherThatIsDue()
{
    Handler a("a", &heard, {"x"});
    Handler b("b", &heard, {"x"});
    Handler c("c", &heard, {"x"});
    a.then = [&b] {
        EventManager::instance()->unsubscribe(&b, "x");
    };

    send("x");

    QCOMPARE(heard, QStringList({"a:x", "c:x"}));
}

void TestHostEvents::handlerMayDestroyItself()
{
    auto a = std::make_unique<Handler>("a", &heard, QStringList{"x"});
    Handler b("b", &heard, {"x"});
    a->then = [&a] {
        a.reset();
    };

    send("x");

    QCOMPARE(heard, QStringList({"a:x", "b:x"}));
}

void TestHostEvents::handlerMayDestroyAnotherThatIsDue()
{
    Handler a("a", &heard, {"x"});
    auto b = std::make_unique<Handler>("b", &heard, QStringList{"x"});
    Handler c("c", &heard, {"x"});
    a.then = [&b] {
        b.reset();
    };

    send("x");

    QCOMPARE(heard, QStringList({"a:x", "c:x"}));
}

void TestHostEvents::newHandlerHearsFromTheNextEventOn()
{
    Handler a("a", &heard, {"x"});
    Handler b("b", &heard);
    a.then = [&b] {
        subscribe(b, "x");
    };

    send("x");
    QCOMPARE(heard, QStringList({"a:x"}));

    heard.clear();
    send("x");
    QCOMPARE(heard, QStringList({"a:x", "b:x"}));
}

void TestHostEvents::handlerMadeWhereADeadOneWasDoesNotHearItsEvent()
{
    Handler a("a", &heard);
    alignas(Handler) unsigned char place[sizeof(Handler)];
    auto *b = new (place) Handler("b", &heard);
    Handler *c = nullptr;
    subscribe(a, "x");
    subscribe(*b, "x");
    a.then = [&] {
        b->~Handler();
        c = new (place) Handler("c", &heard);
        subscribe(*c, "x");
    };

    send("x");
    QCOMPARE(heard, QStringList({"a:x"}));
    c->~Handler();
}

void TestHostEvents::handlerMayRenewItsSubscription()
{
    Handler a("a", &heard, {"x"});
    Handler b("b", &heard, {"x"});
    a.then = [&a] {
        EventManager::instance()->unsubscribe(&a, "x");
        subscribe(a, "x");
    };

    send("x");
    QCOMPARE(heard, QStringList({"a:x", "b:x"}));

    heard.clear();
    send("x");
    QCOMPARE(heard, QStringList({"b:x", "a:x"}));
}

void TestHostEvents::handlerMaySendAnEvent()
{
    Handler a("a", &heard, {"x"});
    Handler b("b", &heard, {"x", "y"});
    a.then = [&a] {
        a.then = nullptr;
        send("y");
    };

    send("x");

    QCOMPARE(heard, QStringList({"a:x", "b:y", "b:x"}));
}

void TestHostEvents::busWorksWithoutAHost()
{
    QVERIFY(EventManager::instance());
    QCOMPARE(EventManager::instance(), EventManager::instance());
    QCOMPARE(EventBus::instance(), EventBus::instance());
    send("nobody listens");
}

MOLK_TEST_GUILESS_MAIN(TestHostEvents)
#include "tst_hostevents.moc"
