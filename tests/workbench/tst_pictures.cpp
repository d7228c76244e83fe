// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

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

MOLK_TEST_MAIN(PicturesTest)
#include "tst_pictures.moc"
