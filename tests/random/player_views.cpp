// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"
#include "stage.h"

#include "molkview.h"
#include "molkviewmanager.h"

#include "core/iview.h"
#include "dev/devicearg.h"

#include <QAction>

using namespace MOLK;

// What is done from here on is done to this document.
void Player::turnTo(int document)
{
    worked = document;
    stage->turnTo(document);
}

int Player::anyOpen(Dice &dice) const
{
    QList<int> open;
    for (int i = 0; i < documents.size(); ++i) {
        if (documents.at(i).view.isOpen)
            open.append(i);
    }
    return dice.oneOf(open);
}

// The view has become the host's active one, or was shown while it was.
void Player::activate(int document)
{
    for (Plain::Document &other : documents)
        other.view.save = nullptr;
    documents[document].view.activate(&action);
}

// A view has gone. The Save action is refreshed from the active view, and if that was the one that
// went, the host has made whichever it likes the active one.
void Player::followHost()
{
    const Core::IView *active = stage->host.documentArea()->activeView();
    for (int i = 0; i < documents.size(); ++i) {
        if (active && stage->view(i) == active)
            activate(i);
    }
}

void Player::switchView(Dice &dice)
{
    turnTo(dice.below(documents.size()));
    if (view().isOpen)
        bringForward(dice);
    else
        open();
}

void Player::bringForward(Dice &dice)
{
    tell("bring " + view().baseName() + " forward");
    if (dice.oneIn(2))
        Core::ViewManager::showView(stage->view());
    else
        MolkViewManager::openMolkView(stage->dir.path() + "/x/../" + view().baseName(),
                                      DEV::DeviceArg("OD-900"));
    activate(worked);
}

namespace {

class OtherView : public Core::IView
{
};

} // namespace

// A view that isn't the plug-in's comes forward and goes again.
void Player::glanceAtAnotherKind(Dice &dice)
{
    tell("glance at a view of another kind");
    auto *other = new OtherView;
    Core::ViewManager::showView(other);
    const QAction *save = stage->saveAction();
    if (save->isEnabled() || save->text() != action.text || save->toolTip() != action.toolTip)
        note("a view of another kind has left the Save action " + save->text());
    if (dice.oneIn(2)) {
        Core::ViewManager::showView(stage->view());
        activate(worked);
    }
    Core::ViewManager::closeView(other);
    followHost();
    Core::ViewManager::showView(stage->view());
    activate(worked);
}

// The top module has changed, and every view asks that hasn't yet.
void Player::hearTopChange()
{
    for (Plain::Document &document : documents) {
        if (document.view.isOpen && !document.view.designChanged)
            document.view.addDesignBanner("Top module changed. Do you want to reload?");
    }
}
