// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "formlines.h"
#include "pagefixture.h"
#include "testwidgetsmain.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMetaMethod>
#include <QSplitter>

using namespace MOLK;

class tst_ProbePortsOptionWidgetForm : public QObject
{
    Q_OBJECT

private slots:
    void classesAnswerToTheirNames();
    void signalsAndSlotsStandInOrder();
    void objectsStandInOrder();
    void textsAreTranslatedInTheFormsContext();
    void formHasItsProperties();
    void treesHaveTheirProperties();
};

void tst_ProbePortsOptionWidgetForm::classesAnswerToTheirNames()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    QVERIFY(fixture.page->qt_metacast("MOLK::ProbePortsOptionWidget"));
    QVERIFY(fixture.page->qt_metacast("QWidget"));
    QCOMPARE(fixture.page->qt_metacast("QUtil::IEventHandler"),
             static_cast<void *>(static_cast<QUtil::IEventHandler *>(fixture.page)));
    QCOMPARE(fixture.page->metaObject()->className(), "MOLK::ProbePortsOptionWidget");
    QCOMPARE(fixture.widget->metaObject()->className(), "MOLK::MolkOptionWidget");
    QVERIFY(fixture.widget->qt_metacast("QTabWidget"));
    QCOMPARE(fixture.line(0)->metaObject()->className(), "MOLK::InitialValueLine");
    QVERIFY(fixture.line(0)->qt_metacast("QLineEdit"));
}

void tst_ProbePortsOptionWidgetForm::signalsAndSlotsStandInOrder()
{
    const auto methods = [](const QMetaObject &object, QMetaMethod::MethodType type) {
        QStringList names;
        for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
            if (object.method(i).methodType() == type)
                names.append(QString::fromLatin1(object.method(i).methodSignature()));
        }
        return names;
    };
    const QMetaObject &page = ProbePortsOptionWidget::staticMetaObject;
    QCOMPARE(methods(page, QMetaMethod::Signal),
             QStringList({"modified()", "netlistChanged()", "ImpleChanged()"}));
    QCOMPARE(
        methods(page, QMetaMethod::Slot),
        QStringList(
            {"editProbeIn(QTreeWidgetItem*,int)", "editProbeOut(QTreeWidgetItem*,int)",
             "onProbeOutClicked(QTreeWidgetItem*,int)", "onValueTreeClicked(QTreeWidgetItem*,int)",
             "onProbeOutTreeCollapsed(QTreeWidgetItem*)",
             "onProbeOutTreeExpanded(QTreeWidgetItem*)", "onValueTreeCollapsed(QTreeWidgetItem*)",
             "onValueTreeExpanded(QTreeWidgetItem*)", "onAddProbeIn()", "onRemoveProbeIn()",
             "onAddProbeOut()", "onRemoveProbeOut()", "onCheckUserClock()",
             "onScrollProbeOutChanged()", "onScrollInitialValueChanged()", "onbtnUserClock()"}));
    QCOMPARE(methods(MolkOptionWidget::staticMetaObject, QMetaMethod::Signal),
             QStringList({"modifed()"}));
    QVERIFY(methods(MolkOptionWidget::staticMetaObject, QMetaMethod::Slot).isEmpty());
    QCOMPARE(methods(InitialValueLine::staticMetaObject, QMetaMethod::Slot),
             QStringList({"onTextChange()"}));
}

void tst_ProbePortsOptionWidgetForm::objectsStandInOrder()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    const QStringList wanted = {
        "QVBoxLayout verticalLayout_3",
        "  QSplitter splitter",
        "    QGroupBox groupBox \"Probe In\"",
        "      QVBoxLayout verticalLayout",
        "        QTreeWidget treeProbeIn",
        "        QWidget widget",
        "          QHBoxLayout horizontalLayout",
        "            QPushButton btnProbeInAdd \"Add\"",
        "            QPushButton btnProbeInRemove \"Remove\"",
        "    QGroupBox groupBox_2 \"Probe Out\"",
        "      QVBoxLayout verticalLayout_2",
        "        QWidget widget_2",
        "          QHBoxLayout horizontalLayout_3",
        "            QWidget widget_5",
        "              QVBoxLayout verticalLayout_5",
        "                QLabel labelPorts \"Ports\"",
        "                QTreeWidget treeProbeOut",
        "            QWidget widget_6",
        "              QVBoxLayout verticalLayout_6",
        "                QLabel labelInitialValue \"Initial Value\"",
        "                QTreeWidget treeValue",
        "        QWidget widget_7",
        "          QHBoxLayout horizontalLayout_4",
        "            QPushButton btnProbeOutAdd \"Add\"",
        "            QPushButton btnProbeOutRemove \"Remove\"",
        "            spacer 198 x 41 Expanding x Minimum",
        "        QWidget widget_3",
        "          QVBoxLayout verticalLayout_4",
        "            QCheckBox checkUserClock \"Output Probe Synchronizes with User Clock\"",
        "            QWidget widget_4",
        "              QHBoxLayout horizontalLayout_2",
        "                QLabel labelClock \"Clock:\"",
        "                QLineEdit lineEditUserClock",
        "                QPushButton btnUserClock \"...\"",
        "                spacer 40 x 20 Expanding x Minimum",
    };
    QCOMPARE(formLines(fixture.page), wanted);
}

void tst_ProbePortsOptionWidgetForm::textsAreTranslatedInTheFormsContext()
{
    const TranslatedTexts texts;
    PageFixture fixture(makeCore({{}}, {{}}));
    QStringList looked = texts.textsOf("MOLK::ProbePortsOptionWidget");
    looked.sort();
    QCOMPARE(looked,
             QStringList({"...", "Add", "Add", "Clock:", "Form", "Initial Value",
                          "Output Probe Synchronizes with User Clock", "Ports", "Probe In",
                          "Probe Out", "Remove", "Remove"}));
}

void tst_ProbePortsOptionWidgetForm::formHasItsProperties()
{
    auto core = makeCore({{}}, {{}});
    Standin::Host host;
    ProbePortsOptionWidget page(core.get(), nullptr, nullptr);
    QCOMPARE(page.objectName(), QString("MOLK__ProbePortsOptionWidget"));
    QCOMPARE(page.size(), QSize(852, 508));
    QCOMPARE(page.windowTitle(), QString("Form"));
    QCOMPARE(page.findChild<QSplitter *>()->orientation(), Qt::Horizontal);

    const auto *clock = page.findChild<QLineEdit *>("lineEditUserClock");
    QCOMPARE(clock->minimumSize(), QSize(180, 0));
    for (const char *name : {"lineEditUserClock", "btnUserClock"}) {
        const QSizePolicy policy = page.findChild<QWidget *>(QLatin1String(name))->sizePolicy();
        QCOMPARE(policy.horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(policy.verticalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(policy.horizontalStretch(), 0);
        QCOMPARE(policy.verticalStretch(), 0);
        QVERIFY(!policy.hasHeightForWidth());
    }
}

void tst_ProbePortsOptionWidgetForm::treesHaveTheirProperties()
{
    PageFixture fixture(makeCore({{}}, {{}}));
    const QList<QTreeWidget *> trees = fixture.page->findChildren<QTreeWidget *>();
    QCOMPARE(trees.size(), 3);
    for (const QTreeWidget *tree : trees) {
        QCOMPARE(tree->headerItem()->text(0), QString("1"));
        QVERIFY(tree->header()->isHidden());
        QCOMPARE(tree->columnCount(), 1);
        QCOMPARE(tree->selectionMode(), QAbstractItemView::SingleSelection);
        QVERIFY(!tree->isSortingEnabled());
        QCOMPARE(tree->styleSheet(),
                 QString("QTreeWidget::item { height: 20px;}QTreeWidget{ icon-size: 17px; }"));
        const bool shortens = tree->objectName() != "treeValue";
        QCOMPARE(tree->textElideMode(), shortens ? Qt::ElideMiddle : Qt::ElideRight);
    }
}

MOLK_TEST_MAIN(tst_ProbePortsOptionWidgetForm)

#include "tst_probeportsoptionwidget_form.moc"
