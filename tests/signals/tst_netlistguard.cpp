// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlistguard.h"

#include "fathom/rtlnetlist.h"
#include "netlist/netlistbuilder.h"

#include "testmain.h"

#include <memory>

using namespace MOLK;

class TestNetlistGuard : public QObject
{
    Q_OBJECT

private slots:
    void aGuardTurnsNullWhenItsNetlistEnds();
    void otherNetlistsStay();
    void aNewNetlistAtAnOldAddressIsNotTakenForIt();
    void nullIsLetThrough();
};

void TestNetlistGuard::aGuardTurnsNullWhenItsNetlistEnds()
{
    FATHOM::RtlNetlist *netlist = Standin::NetlistBuilder("top").build();
    const NetlistGuard first(netlist);
    const NetlistGuard second(netlist);
    {
        const NetlistGuard gone(netlist);
        QCOMPARE(gone.get(), netlist);
    }
    endNetlist(netlist);
    QVERIFY(!first.get());
    QVERIFY(!second.get());
}

void TestNetlistGuard::otherNetlistsStay()
{
    const std::unique_ptr<FATHOM::RtlNetlist> stays(Standin::NetlistBuilder("top").build());
    const NetlistGuard guard(stays.get());
    endNetlist(Standin::NetlistBuilder("top").build());
    QCOMPARE(guard.get(), stays.get());
}

void TestNetlistGuard::aNewNetlistAtAnOldAddressIsNotTakenForIt()
{
    // Asked for often enough, the allocator hands an address out again.
    FATHOM::RtlNetlist *netlist = Standin::NetlistBuilder("top").build();
    const NetlistGuard guard(netlist);
    const quintptr address = quintptr(netlist);
    endNetlist(netlist);
    for (int i = 0; i < 100; ++i) {
        const std::unique_ptr<FATHOM::RtlNetlist> next(Standin::NetlistBuilder("top").build());
        const bool again = quintptr(next.get()) == address;
        QVERIFY(!guard.get());
        if (again)
            return;
    }
}

void TestNetlistGuard::nullIsLetThrough()
{
    const NetlistGuard guard(nullptr);
    endNetlist(nullptr);
    QVERIFY(!guard.get());
}

MOLK_TEST_GUILESS_MAIN(TestNetlistGuard)

#include "tst_netlistguard.moc"
