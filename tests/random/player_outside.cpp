// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "player.h"

#include "comparison.h"
#include "configurations.h"
#include "stage.h"
#include "turnloop.h"

#include "messagedlg.h"
#include "molkview.h"
#include "molkview_p.h"
#include "reloadbanner.h"

#include "te/designfile.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLayout>
#include <QPushButton>
#include <QTextEdit>

#include <cstdio>

using namespace MOLK;

static bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Puts something new under the file's name, in the file or in place of it.
void Player::writeFile(Plain::Disk::Kind kind, bool byRename, Dice &dice)
{
    const QString path = stage->path();
    const bool stays = kind != Plain::Disk::Missing && kind != Plain::Disk::Directory
        && disk().kind != Plain::Disk::Directory && !byRename;
    if (!stays) {
        view().watched = false;
        if (!byRename || disk().kind == Plain::Disk::Directory || kind == Plain::Disk::Missing
            || kind == Plain::Disk::Directory) {
            QDir(path).removeRecursively();
            QFile::remove(path);
        }
    }

    disk() = Plain::Disk();
    disk().kind = kind;
    bool done = true;
    if (kind == Plain::Disk::Directory) {
        done = QDir().mkpath(path);
    } else if (kind != Plain::Disk::Missing) {
        if (kind == Plain::Disk::Readable)
            disk().content = randomConfiguration(dice);
        disk().bytes =
            kind == Plain::Disk::Readable ? Plain::fileText(disk().content) : damagedText(dice);
        done = writeBytes(byRename ? path + ".new" : path, disk().bytes);
        if (byRename)
            done = done && std::rename(qPrintable(path + ".new"), qPrintable(path)) == 0;
    }
    if (!done)
        note("can't write " + path);
}

void Player::changeFile(Dice &dice)
{
    const int before = worked;
    turnTo(dice.oneIn(3) ? anyOpen(dice) : worked);
    for (int changes = dice.between(1, 2); changes > 0; --changes) {
        const auto kind = dice.oneOf(QList<Plain::Disk::Kind>{
            Plain::Disk::Readable, Plain::Disk::Readable, Plain::Disk::Readable,
            Plain::Disk::Readable, Plain::Disk::Damaged, Plain::Disk::Missing,
            Plain::Disk::Directory});
        const bool byRename = dice.oneIn(3);
        static const QStringList names = {"remove the file", "write a file", "damage the file",
                                          "put a directory in the file's place"};
        tell(names.at(kind) + QLatin1String(byRename ? " by renaming" : "") + " at "
             + view().baseName());
        const bool isNoticed = view().watched;
        writeFile(kind, byRename, dice);
        noticeFile(isNoticed, changes > 1, dice);
    }
    turnTo(before);
}

// The news of the file comes through the event loop.
void Player::noticeFile(bool isNoticed, bool mayChangeAgain, Dice &dice)
{
    const auto *document = private_impl::MolkViewPrivate::get(stage->view());
    if (isNoticed) {
        const QDeadlineTimer limit(5000);
        while (!document->reloadPending && !limit.hasExpired())
            QCoreApplication::processEvents();
    }
    turnLoop();
    const bool asks = isNoticed && !view().reloadPending;
    view().reloadPending = view().reloadPending || isNoticed;
    if (document->reloadPending != view().reloadPending)
        note("the change of the file is noticed wrongly");
    if (asks && dice.oneIn(2) && mayChangeAgain) {
        // The second change comes before the time has passed.
        writeFile(Plain::Disk::Readable, false, dice);
        turnLoop();
    }
    stage->letTimePass();
    if (asks)
        view().addFileBanner(disk().kind != Plain::Disk::Missing);
}

void Player::sendEvent(Dice &dice)
{
    const QString name = dice.oneOf(QList<QString>{
        "TE.File.Add", "TE.File.Remove", "TE.File.Change.Enable", "TE.File.Change.Type",
        "TE.File.Modified", "TE.Option.Change", "TE.Device.Change"});
    const int fileType = dice.between(0, 5);
    const bool fileEnabled = dice.oneIn(2);
    QVariantMap values;
    values["file"] = "/project/a.v";
    if (!dice.oneIn(6))
        values["type"] = dice.between(-1, 6);
    if (!dice.oneIn(6))
        values["previous"] = dice.between(-1, 6);
    if (!dice.oneIn(6))
        values["enable"] = dice.oneIn(2);
    values["option"] = dice.oneOf(
        QList<QString>{"IncludePath", "Verilog_Standard", "TopModule", "topmodule", "Device"});
    const Standin::Event event(name, values);
    tell(event.toString());

    TE::DesignFile file;
    file.path = "/project/a.v";
    file.type = fileType;
    file.enable = fileEnabled;
    stage->host.design().setFileInfo(file);
    for (Plain::Document &document : documents) {
        const QString question = document.view.questionFor(name, values, fileType, fileEnabled);
        if (document.view.isOpen && !question.isNull())
            document.view.addDesignBanner(question);
    }
    projectDesign = dice.below(Plain::designs().size());
    topIsSet = dice.oneIn(2);
    stage->host.events().send(event);
}

void Player::answerBanner(Dice &dice)
{
    if (view().banners.isEmpty())
        return tell("answer no banner");
    const int index = dice.below(view().banners.size());
    const bool aboutDesign = view().banners.at(index).aboutDesign;
    const bool yes = dice.oneIn(2);
    tell(QString("answer the banner about the %1 with %2")
             .arg(QLatin1String(aboutDesign ? "design" : "file"))
             .arg(yes ? view().banners.at(index).yes : view().banners.at(index).no));
    const QLayout *layout =
        stage->view()->findChild<QWidget *>("widget_3", Qt::FindDirectChildrenOnly)->layout();
    QWidget *banner = layout->itemAt(index)->widget();
    if (aboutDesign)
        answerDesignBanner(yes, dice);
    else
        answerFileBanner(yes);
    Stage::press(banner, yes ? "btnA" : "btnB");
    if (!view().isOpen)
        followHost();
}

void Player::answerFileBanner(bool yes)
{
    QString answer;
    for (const Plain::Banner &banner : qAsConst(view().banners)) {
        if (!banner.aboutDesign)
            answer = yes ? banner.yes : banner.no;
    }
    view().removeBanner(false);
    if (answer == "Close") {
        view().closeUnasked();
    } else if (answer == "Reload") {
        if (disk().kind == Plain::Disk::Readable) {
            view().reload(disk().content);
        } else {
            stage->modals.expectBox("Reload Molk", "Invalid MOLK file.", QMessageBox::Ok);
            view().closeUnasked();
        }
    }
}

void Player::answerDesignBanner(bool yes, Dice &dice)
{
    view().removeBanner(true);
    if (!yes)
        return;
    const int outcome = dice.oneIn(4) ? dice.between(1, 6) : 0;
    const bool taken = prepareRead(outcome);
    // While it reads, the view is deaf to what the others hear.
    const bool readsNets = outcome == 0 || outcome > 4;
    if (readsNets && dice.oneIn(3)) {
        changeTopDuringRead();
        view().designChanged = true;
        hearTopChange();
        view().designChanged = false;
    }
    if (taken)
        view().takeDesign(projectDesign);
    else
        view().closeUnasked();
}

void Player::changeTopDuringRead()
{
    tell("a change of the top module in the midst of reading the design");
    stage->host.extraction().duringNetlist([this] {
        stage->host.events().send(Standin::Event("TE.Option.Change", {{"option", "TopModule"}}));
    });
}

// Scripts the next reading of the design: 0 for success, anything else for one of the refusals.
// \return whether it succeeds.
bool Player::prepareRead(int outcome)
{
    const QString top = topIsSet ? "top" : QString();
    Standin::ModulesAnswer answer = {{"top"}, {"top"}, {"a line with ERROR behind", "error: no"}};
    QStringList files = {"/project/a.v"};
    const Plain::Design design = Plain::designs().at(projectDesign);
    QString madeTop = "top";
    const QString faults = "Design files contain some errors";
    QString title = "Error";
    QString text;
    switch (outcome) {
    case 1:
        files.clear();
        text = "Design files are not exist.";
        break;
    case 2:
        answer.messages.append("ERROR: bad <b>line</b>");
        break;
    case 3:
        answer.modules.clear();
        title = topIsSet ? QString("Invalid Top Module") : faults;
        text = topIsSet ? QString("No module named \"top\", please reset top module.")
                        : QString("Get no module from design.");
        break;
    case 4:
        answer.topModules.append("second");
        title = topIsSet ? faults : QString("Multiple Top Module");
        text = topIsSet ? QString("Get no module from design.")
                        : QString("Multiple top, please set top module.");
        break;
    case 5:
        if (!topIsSet)
            return prepareRead(6);
        madeTop = "Top";
        text = "Get module \"top\" failed, just received default module \"Top\".";
        break;
    case 6:
        text = "OD_JTAG used in design conflicts with MOLK.";
        break;
    default:
        break;
    }

    stage->host.design().setSourceFiles(files, top);
    stage->host.extraction().clear();
    stage->host.extraction().serve(answer, [design, madeTop, outcome] {
        Plain::Design made = design;
        made.levels[0].name = madeTop;
        return made.netlist(outcome == 6);
    });
    if (outcome == 0)
        return true;
    tell("refused " + QString::number(outcome));
    if (outcome == 2) {
        const QString log = answer.messages.join("\n");
        stage->modals.expectDialog<MessageDlg>([this, log](MessageDlg *dialog) {
            if (dialog->windowTitle() != "Design files contain some errors."
                || dialog->findChild<QTextEdit *>("textEdit")->toPlainText() != log)
                note("the messages of the design are wrong");
            dialog->findChild<QDialogButtonBox *>("buttonBox")
                ->button(QDialogButtonBox::Ok)
                ->click();
        });
    } else {
        stage->modals.expectBox(title, text, QMessageBox::Ok);
    }
    return false;
}
