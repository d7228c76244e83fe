// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "probedialog.h"
#include "probeout.h"
#include "signaltreewidget.h"

#include "formlines.h"
#include "testwidgetsmain.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLayout>
#include <QMetaMethod>
#include <QToolButton>

using namespace MOLK;

class TestProbeDialogForm : public QObject
{
    Q_OBJECT

private slots:
    void objectsStandInOrder();
    void textsAreTranslatedInTheFormsContext();
    void dialogHasItsProperties();
    void treeHasItsProperties();
    void buttonsAndLabelsHaveTheirProperties();
    void signalsAndSlotsStandInOrder();
    void titleNamesTheDirection();
};

namespace {

struct Fixture
{
    ProbeIn port{0};
    ProbeDialog dialog{&port, nullptr, 0, nullptr};

    template<typename Child>
    Child *find(const char *name) const
    {
        return dialog.findChild<Child *>(QLatin1String(name));
    }
};

} // namespace

void TestProbeDialogForm::objectsStandInOrder()
{
    const Fixture f;
    const QStringList wanted = {
        "QVBoxLayout verticalLayout",
        "  QWidget widgetSignals",
        "    QHBoxLayout horizontalLayout margins 0 0 0 0",
        "      MOLK::signalTreeWidget treeWidget",
        "      QWidget widget",
        "        QVBoxLayout verticalLayout_5 margins 0 0 0 0",
        "          QLabel label_6 \"MSB\"",
        "          QFrame line HLine Sunken",
        "          spacer 20 x 40 Minimum x Expanding",
        "          QToolButton btnAdd \"Add Signals\"",
        "          QToolButton btnRemove \"Remove\"",
        "          spacer 0 x 0 Minimum x Expanding",
        "          QFrame line_2 HLine Sunken",
        "          QLabel label_7 \"LSB\"",
        "  QDialogButtonBox buttonBox",
    };
    QCOMPARE(formLines(&f.dialog), wanted);
}

void TestProbeDialogForm::textsAreTranslatedInTheFormsContext()
{
    const TranslatedTexts texts;
    const Fixture f;
    QStringList looked = texts.textsOf("MOLK::ProbeDialog");
    looked.sort();
    QCOMPARE(looked, QStringList({"Add Signals", "Add Signals", "LSB", "MSB", "Remove", "Remove"}));
}

void TestProbeDialogForm::dialogHasItsProperties()
{
    const Fixture f;
    QCOMPARE(f.dialog.objectName(), QString("MOLK__ProbeDialog"));
    QCOMPARE(f.dialog.metaObject()->className(), "MOLK::ProbeDialog");
    QCOMPARE(f.dialog.size(), QSize(410, 461));
    QCOMPARE(f.find<QHBoxLayout>("horizontalLayout")->spacing(), 10);
    const auto *box = f.find<QDialogButtonBox>("buttonBox");
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void TestProbeDialogForm::treeHasItsProperties()
{
    const Fixture f;
    const auto *tree = f.find<signalTreeWidget>("treeWidget");
    QCOMPARE(tree->dragDropMode(), QAbstractItemView::InternalMove);
    QCOMPARE(tree->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(tree->textElideMode(), Qt::ElideMiddle);
    QCOMPARE(tree->styleSheet(), QString("QTreeWidget::item { height: 20px;}"));
    QCOMPARE(tree->headerItem()->text(0), QString("1"));
    QVERIFY(tree->header()->isHidden());
    QVERIFY(!tree->isSortingEnabled());
}

// The picture's one colour.
static QString colorOf(const QIcon &icon)
{
    return QColor(icon.pixmap(4, 4).toImage().pixel(2, 2)).name();
}

void TestProbeDialogForm::buttonsAndLabelsHaveTheirProperties()
{
    const Fixture f;
    for (const char *name : {"label_6", "label_7"}) {
        QCOMPARE(f.find<QLabel>(name)->font().pointSize(), 9);
        QCOMPARE(f.find<QLabel>(name)->alignment(), Qt::AlignCenter);
    }
    const auto *add = f.find<QToolButton>("btnAdd");
    QCOMPARE(add->toolTip(), QString("Add Signals"));
    QCOMPARE(add->iconSize(), QSize(22, 22));
    QCOMPARE(colorOf(add->icon()), QString("#ff0000"));
    QVERIFY(add->isEnabled());
    const auto *remove = f.find<QToolButton>("btnRemove");
    QCOMPARE(remove->toolTip(), QString("Remove"));
    QCOMPARE(remove->iconSize(), QSize(22, 22));
    QVERIFY(!remove->isEnabled());
    QCOMPARE(QColor(remove->icon().pixmap(QSize(4, 4), QIcon::Normal).toImage().pixel(2, 2)).name(),
             QString("#00ff00"));
}

void TestProbeDialogForm::signalsAndSlotsStandInOrder()
{
    const QMetaObject &object = ProbeDialog::staticMetaObject;
    QStringList names;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        const QMetaMethod method = object.method(i);
        const QString access =
            QLatin1String(method.access() == QMetaMethod::Public ? "public" : "private");
        const QString kind =
            QLatin1String(method.methodType() == QMetaMethod::Signal ? "signal" : "slot");
        const QString signature = QString::fromLatin1(method.methodSignature());
        names.append(QStringList({access, kind, signature}).join(" "));
    }
    QCOMPARE(
        names,
        QStringList({"public signal closeOldSearchDialog()", "public slot accept()",
                     "public slot closeWidget()", "private slot onAdd()", "private slot onRemove()",
                     "private slot on_treeWidget_itemSelectionChanged()"}));
}

void TestProbeDialogForm::titleNamesTheDirection()
{
    ProbeIn in(0);
    ProbeOut out(0);
    QCOMPARE(ProbeDialog(&in, nullptr, 0, nullptr).windowTitle(), QString("Probe In Port"));
    QCOMPARE(ProbeDialog(&out, nullptr, 1, nullptr).windowTitle(), QString("Probe Out Port"));
}

MOLK_TEST_MAIN(TestProbeDialogForm)

#include "tst_probedialog_form.moc"
