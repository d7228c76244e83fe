// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dice.h"
#include "plainsearch.h"
#include "plainview.h"

#include <QList>

#include <functional>

class QTreeWidget;
class QTreeWidgetItem;
class Stage;

namespace MOLK {
class MolkSignalSelectDialog;
class ProbeDialog;
class ProbePortsOptionWidget;
} // namespace MOLK

/// One action of a sequence. All choices in it come from its own seed and from the state that it
/// meets, so that it keeps a meaning when other steps are taken out of the sequence.
struct Step
{
    int action = 0;
    quint64 seed = 0;
};

/// Plays steps on the real plug-in and on the plain model, and compares the two after each.
///
/// There are one to three documents. One of them is worked on, and its view is the host's active
/// one when a step begins; some steps reach for the others behind it.
class Player
{
public:
    /// \param sessionSeed decides how many documents there are and what they hold at first.
    Player(Stage *realStage, quint64 sessionSeed);

    /// A sequence of \a count steps.
    static QList<Step> randomSteps(Dice &dice, int count);

    /// Plays \a steps from a fresh start.
    ///
    /// \return the first difference; empty if there is none.
    QString play(const QList<Step> &steps);

    /// What was done, one line a step, the last one being that of the difference.
    QStringList story() const { return told; }

private:
    using Play = void (Player::*)(Dice &);
    struct Kind
    {
        Play play;
        int weight;
    };
    static const QList<Kind> kinds;

    QString check();
    void begin();
    void settle();
    void tell(const QString &text);
    void note(const QString &fault);
    void compareRows(const QString &what, const QStringList &wanted, const QStringList &got);

    // The views: player_views.cpp
    Plain::View &view() { return documents[worked].view; }
    Plain::Disk &disk() { return documents[worked].disk; }
    void turnTo(int document);
    int anyOpen(Dice &dice) const;
    void activate(int document);
    void followHost();
    void switchView(Dice &dice);
    void bringForward(Dice &dice);
    void glanceAtAnotherKind(Dice &dice);
    void hearTopChange();

    // The document: player_document.cpp
    void open();
    void save(Dice &dice);
    void closeAndReopen(Dice &dice);
    void chooseTool(Dice &dice);
    void closeView(Dice &dice);
    bool expectSave(bool gated);

    // The cores: player_cores.cpp
    void switchCore(Dice &dice);
    void coreMenu(Dice &dice);
    void chooseAdd();
    void chooseRemove(int row, Dice &dice);

    // The ports: player_ports.cpp
    void addPort(Dice &dice);
    void removeProbeIn(Dice &dice);
    void removeProbeOut(Dice &dice);
    void toggleExpansion(Dice &dice);
    void clickPaired(Dice &dice);
    bool expand(QTreeWidgetItem *row, bool *expanded);
    QTreeWidgetItem *pickShownRow(Dice &dice, int port, int *signal, int *bit);

    // The values and the clock: player_values.cpp
    void typeValue(Dice &dice);
    void placeCursor(int port, Dice &dice);
    bool typeKeys(int port, Dice &dice);
    bool walkThroughValues(int *port, Dice &dice);
    void toggleClock(Dice &dice);
    void typeClock(Dice &dice);
    void pickClock(Dice &dice);
    void commitFocused();
    void commit(int page, int port);

    // The dialogs: player_dialogs.cpp and player_search.cpp
    void editPort(Dice &dice);
    bool editItems(MOLK::ProbeDialog *dialog, Plain::Items *items, Dice &dice);
    bool addInDialog(MOLK::ProbeDialog *dialog, Plain::Items *items, Dice &dice);
    void removeInDialog(MOLK::ProbeDialog *dialog, Plain::Items *items, Dice &dice);
    void dragInDialog(MOLK::ProbeDialog *dialog, Plain::Items *items, Dice &dice);
    void pressKeysInDialog(MOLK::ProbeDialog *dialog, Plain::Items *items, Dice &dice);
    bool readDesignUnderDialog(Dice &dice);
    bool pickSignals(MOLK::MolkSignalSelectDialog *dialog, Plain::Items *items, Dice &dice);
    Plain::Search fillSearch(MOLK::MolkSignalSelectDialog *dialog, Dice &dice);
    void moveResults(MOLK::MolkSignalSelectDialog *dialog, const QList<Plain::Found> &results,
                     Plain::Items *items, Dice &dice);
    void removeSelected(MOLK::MolkSignalSelectDialog *dialog, Plain::Items *items, Dice &dice);

    // What happens outside: player_outside.cpp
    void changeFile(Dice &dice);
    void writeFile(Plain::Disk::Kind kind, bool byRename, Dice &dice);
    void sendEvent(Dice &dice);
    void answerBanner(Dice &dice);
    void answerFileBanner(bool yes);
    void answerDesignBanner(bool yes, Dice &dice);
    bool prepareRead(int outcome);
    void changeTopDuringRead();
    void noticeFile(bool isNoticed, bool mayChangeAgain, Dice &dice);

    Plain::Page &page() { return view().pages[view().current]; }
    MOLK::ProbePortsOptionWidget *realPage();
    QTreeWidget *tree(const QString &name);

    Stage *stage;
    quint64 seed;
    QList<Plain::Document> documents;
    int worked = 0; ///< The document that is worked on.
    Plain::Action action;
    int projectDesign = 0;
    bool topIsSet = false;
    QString tool;
    bool dialogIsBlind = false; ///< The open dialogs have lost their netlist.
    int dialogType = 0;
    int dialogDesign = 0;
    QStringList told;
};
