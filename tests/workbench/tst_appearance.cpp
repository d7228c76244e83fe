// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "appearance.h"
#include "contrast.h"
#include "testwidgetsmain.h"

#include <QLineEdit>
#include <QTreeWidget>

/// What the style draws by itself can be made out.
class TestAppearance : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void linesOnADarkListHaveAFrame();
};

void TestAppearance::initTestCase()
{
    Workbench::initStyle();
    Workbench::useDarkColours();
}

void TestAppearance::linesOnADarkListHaveAFrame()
{
    QTreeWidget tree;
    tree.setStyleSheet("QTreeWidget::item { height: 20px; }");
    auto *row = new QTreeWidgetItem(&tree);
    auto *line = new QLineEdit;
    tree.setItemWidget(row, 0, line);
    tree.resize(300, 100);

    const QImage picture = line->grab().toImage();
    const QColor frame = picture.pixelColor(0, line->height() / 2);
    const QColor list = tree.palette().color(QPalette::Base);
    const double told = contrast(frame, list);
    QVERIFY2(told >= 3, qPrintable(frame.name() + " on " + list.name()));
}

MOLK_TEST_MAIN(TestAppearance)

#include "tst_appearance.moc"
