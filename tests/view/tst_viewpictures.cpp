// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "pictures.h"
#include "reloadbanner.h"
#include "testwidgetsmain.h"
#include "viewtest.h"

#include <QLabel>

using namespace MOLK;

// The pictures are the host's; this is what they are asked for by name.
class tst_ViewPictures : public ViewTest
{
    Q_OBJECT

private slots:
    void initTestCase() { Workbench::initPictures(); }
    void changedBannerWarns();
    void reloadBannersAskForAttention();
};

static QImage shownPicture(const QLabel *label)
{
    return label->pixmap(Qt::ReturnByValue).toImage();
}

void tst_ViewPictures::changedBannerWarns()
{
    newView();

    const QImage picture = shownPicture(child<QLabel>(view, "warningIcon"));
    QVERIFY(!picture.isNull());
    QCOMPARE(picture, QPixmap(":/fpgaprj/image/warning.png").toImage());
}

void tst_ViewPictures::reloadBannersAskForAttention()
{
    for (int mode : {ReloadBanner::FileChanged, ReloadBanner::FileRemoved, 2}) {
        const ReloadBanner banner(mode, "/a.molk", nullptr);
        const QImage picture = shownPicture(child<QLabel>(&banner, "label"));
        QVERIFY(!picture.isNull());
        QCOMPARE(picture, QPixmap(":/utils/image/attention.png").toImage());
    }
}

MOLK_TEST_MAIN(tst_ViewPictures)
#include "tst_viewpictures.moc"
