// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "contrast.h"
#include "pictures.h"
#include "testwidgetsmain.h"

#include <QDirIterator>
#include <QImageReader>

class PicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Workbench::initPictures(); }
    void whatPluginsExpectOfTheirHostIsThere_data();
    void whatPluginsExpectOfTheirHostIsThere();
    void everyPictureCanBeRead();
    void picturesOfLevelsStandOut_data();
    void picturesOfLevelsStandOut();
};

void PicturesTest::whatPluginsExpectOfTheirHostIsThere_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow(":/fpgaprj/image/warning") << 24;
    QTest::newRow(":/utils/image/attention") << 40;
    QTest::newRow(":/netlist/image/magnifier") << 20;
    QTest::newRow(":/netlist/image/module") << 16;
    QTest::newRow(":/zorins/image/add") << 22;
    QTest::newRow(":/zorins/image/delete") << 22;
    QTest::newRow(":/zorins/image/module") << 16;
}

void PicturesTest::whatPluginsExpectOfTheirHostIsThere()
{
    QFETCH(int, size);
    const QString name = QLatin1String(QTest::currentDataTag());
    QCOMPARE(QImage(name + ".png").size(), QSize(size, size));
    const QImage large(name + "@2x.png");
    QCOMPARE(large.size(), QSize(2 * size, 2 * size));
    QVERIFY(large.hasAlphaChannel());
}

void PicturesTest::everyPictureCanBeRead()
{
    int count = 0;
    for (QDirIterator it(":/workbench"); it.hasNext(); ++count) {
        const QString path = it.next();
        QVERIFY2(!QImage(path).isNull(), qPrintable(path));
    }
    QVERIFY(count > 20);
}

void PicturesTest::picturesOfLevelsStandOut_data()
{
    QTest::addColumn<QColor>("row");
    QTest::newRow("light") << QColor(Qt::white);
    QTest::newRow("light-selected") << QColor(0x30, 0x8c, 0xc6);
    QTest::newRow("dark") << QColor(0x20, 0x22, 0x26);
    QTest::newRow("dark-selected") << QColor(0x33, 0x74, 0xb4);
}

void PicturesTest::picturesOfLevelsStandOut()
{
    QFETCH(QColor, row);
    for (const char *name : {":/netlist/image/module.png", ":/zorins/image/module.png"}) {
        const QImage picture{QString::fromLatin1(name)};
        int standingOut = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                standingOut += color.alpha() > 200 && contrast(color, row) >= 2;
            }
        }
        // Some strokes of it at least.
        QVERIFY2(standingOut >= 12,
                 qPrintable(QString("%1: %2").arg(QLatin1String(name)).arg(standingOut)));
    }
}

MOLK_TEST_MAIN(PicturesTest)
#include "tst_pictures.moc"
