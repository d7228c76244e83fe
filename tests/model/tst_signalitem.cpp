// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "signalitem.h"
#include "testmain.h"

#include <QMetaType>

using MOLK::SignalItem;

/// A signal is a plain value that rows carry in a variant.
class TestSignalItem : public QObject
{
    Q_OBJECT

private slots:
    void newItemHasDefaults();
    void metaTypeIsRegisteredUnderItsName();
    void metaTypeNeedsConstructionAndDestruction();
    void everyFieldSurvivesAVariant();
    void foreignVariantGivesADefaultItem_data();
    void foreignVariantGivesADefaultItem();
    void copyIsIndependent();
};

void TestSignalItem::newItemHasDefaults()
{
    const SignalItem item;
    QVERIFY(item.name.isEmpty());
    QVERIFY(!item.name.isNull());
    QVERIFY(item.alias.isNull());
    QVERIFY(item.members.isEmpty());
    QCOMPARE(item.selectable, true);
    QCOMPARE(item.found, true);
    QCOMPARE(item.kind, -1);
}

void TestSignalItem::metaTypeIsRegisteredUnderItsName()
{
    const int id = qMetaTypeId<SignalItem>();
    QCOMPARE(QMetaType::typeName(id), "MOLK::SignalItem");
    QCOMPARE(QMetaType::type("MOLK::SignalItem"), id);
    QCOMPARE(MOLK::signalToVariant(SignalItem()).userType(), id);
}

void TestSignalItem::metaTypeNeedsConstructionAndDestruction()
{
    const QMetaType type(qMetaTypeId<SignalItem>());
    QVERIFY(type.flags() & QMetaType::NeedsConstruction);
    QVERIFY(type.flags() & QMetaType::NeedsDestruction);
    QVERIFY(!(type.flags() & QMetaType::MovableType));
}

void TestSignalItem::everyFieldSurvivesAVariant()
{
    SignalItem item;
    item.name = "top/q[1:0]";
    item.alias = "Q";
    item.selectable = false;
    item.found = false;
    item.kind = 1;
    item.members = {SignalItem(), SignalItem()};
    item.members[1].name = "top/q[0]";

    const SignalItem back = MOLK::signalFromVariant(MOLK::signalToVariant(item));
    QCOMPARE(back.name, item.name);
    QCOMPARE(back.alias, item.alias);
    QCOMPARE(back.selectable, false);
    QCOMPARE(back.found, false);
    QCOMPARE(back.kind, 1);
    QCOMPARE(back.members.size(), 2);
    QCOMPARE(back.members.at(1).name, QString("top/q[0]"));
}

void TestSignalItem::foreignVariantGivesADefaultItem_data()
{
    QTest::addColumn<QVariant>("variant");

    QTest::newRow("invalid") << QVariant();
    QTest::newRow("text") << QVariant("top/clk");
    QTest::newRow("number") << QVariant(1);
    QTest::newRow("list") << QVariant(QVariantList{1, 2});
    QTest::newRow("null-pointer") << QVariant::fromValue<void *>(nullptr);
}

void TestSignalItem::foreignVariantGivesADefaultItem()
{
    QFETCH(QVariant, variant);
    const SignalItem item = MOLK::signalFromVariant(variant);
    QVERIFY(item.name.isEmpty());
    QVERIFY(item.alias.isNull());
    QVERIFY(item.members.isEmpty());
    QCOMPARE(item.kind, -1);
}

void TestSignalItem::copyIsIndependent()
{
    SignalItem item;
    item.members.append(SignalItem());
    SignalItem copy = item;
    copy.members[0].name = "changed";
    copy.kind = 0;
    QCOMPARE(item.members.at(0).name, QString());
    QCOMPARE(item.kind, -1);
}

MOLK_TEST_GUILESS_MAIN(TestSignalItem)
#include "tst_signalitem.moc"
