// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designs.h"
#include "searchfixture.h"

#include "formlines.h"
#include "testwidgetsmain.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLayout>
#include <QMetaMethod>

using namespace MOLK;

class TestMolkSignalSelectDialogForm : public QObject
{
    Q_OBJECT

private slots:
    void objectsStandInOrder();
    void textsAreTranslatedInTheFormsContext();
    void dialogHasItsProperties();
    void buttonsHaveTheirProperties();
    void treesHaveTheirProperties();
    void slotsStandInOrder();
    void picturesAreTheHosts();
};

void TestMolkSignalSelectDialogForm::objectsStandInOrder()
{
    const Design design = searchDesign();
    const MolkSignalSelectDialog dialog(design.get(), 0, nullptr);
    const QStringList wanted = {
        "QVBoxLayout verticalLayout",
        "  QWidget widget",
        "    QHBoxLayout horizontalLayout_3 margins 0 0 0 0",
        "      QLabel label \"Name:\"",
        "      QLineEdit lineEditName",
        "      QPushButton pushButtonSearch \"Search\"",
        "  QWidget widget_2",
        "    QHBoxLayout horizontalLayout_4 margins 0 0 0 0",
        "      QRadioButton radioButtonNormal \"Normal\"",
        "      QRadioButton radioButtonWildcard \"Wildcard\"",
        "      QRadioButton radioButtonRegularExpression \"Regular Expression\"",
        "      spacer 40 x 20 Expanding x Minimum",
        "      QCheckBox checkBoxCaseSensitive \"Case Sensitive\"",
        "  QWidget widget_3",
        "    QVBoxLayout verticalLayout_2 margins 0 0 0 0",
        "      QWidget widget_5",
        "        QHBoxLayout horizontalLayout_5 margins 0 0 0 0",
        "          QFrame line HLine Sunken",
        "          QCheckBox checkBoxAdvancedFilter \"Advanced Filter\"",
        "          QFrame line_2 HLine Sunken",
        "      QWidget widget_4",
        "        QGridLayout gridLayout",
        "          0,0 QLabel label_4 \"Search In\"",
        "          0,1+3 QComboBox comboBoxSearchIn",
        "          2,1 QCheckBox checkBoxIncludeSubentries \"Include Subentries\"",
        "          2,2 QCheckBox checkBoxHierarchyView \"Hierarchy View\"",
        "          2,3 spacer 40 x 20 Expanding x Minimum",
        "  QWidget widget_6",
        "    QGridLayout gridLayout_2",
        "      0,0 QTreeWidget treeWidget",
        "      0,1 QWidget widgetButton",
        "        QVBoxLayout verticalLayout_3 margins 0 - 0 -",
        "          spacer 20 x 40 Minimum x Expanding",
        "          QPushButton btnAdd \">\"",
        "          QPushButton btnAddAll \">>\"",
        "          QPushButton btnDel \"<\"",
        "          QPushButton btnDelAll \"<<\"",
        "          spacer 20 x 40 Minimum x Expanding",
        "      0,2 QTreeWidget treeWidgetAddSignal",
        "  QDialogButtonBox buttonBox",
    };
    QCOMPARE(formLines(&dialog), wanted);
}

void TestMolkSignalSelectDialogForm::textsAreTranslatedInTheFormsContext()
{
    const TranslatedTexts texts;
    const MolkSignalSelectDialog dialog(nullptr, 0, nullptr);
    QStringList looked = texts.textsOf("MOLK::MolkSignalSelectDialog");
    looked.sort();
    QCOMPARE(looked,
             QStringList({"<", "<<", ">", ">>", "Advanced Filter", "Case Sensitive",
                          "Hierarchy View", "Include Subentries", "Name:", "Normal",
                          "Regular Expression", "Search", "Search In", "Search Nets", "Wildcard"}));
}

void TestMolkSignalSelectDialogForm::dialogHasItsProperties()
{
    const MolkSignalSelectDialog dialog(nullptr, 0, nullptr);
    QCOMPARE(dialog.objectName(), QString("MOLK__MolkSignalSelectDialog"));
    QCOMPARE(dialog.metaObject()->className(), "MOLK::MolkSignalSelectDialog");
    QCOMPARE(dialog.windowTitle(), QString("Search Nets"));
    QCOMPARE(dialog.size(), QSize(517, 500));
    QCOMPARE(dialog.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(dialog.windowOpacity(), 1.0);
    QCOMPARE(dialog.findChild<QWidget *>("line")->minimumSize(), QSize(15, 0));
    const auto policy = [&dialog](const char *name) {
        return dialog.findChild<QWidget *>(QLatin1String(name))->sizePolicy();
    };
    QCOMPARE(policy("line").horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(policy("line_2").horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(policy("comboBoxSearchIn").horizontalPolicy(), QSizePolicy::Expanding);
    for (const char *name : {"line", "line_2", "comboBoxSearchIn"})
        QCOMPARE(policy(name).verticalPolicy(), QSizePolicy::Fixed);
    const auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void TestMolkSignalSelectDialogForm::buttonsHaveTheirProperties()
{
    const MolkSignalSelectDialog dialog(nullptr, 0, nullptr);
    QCOMPARE(dialog.findChild<QAbstractButton *>("pushButtonSearch")->iconSize(), QSize(20, 20));
    const QMap<QString, QString> toolTips{{"btnAdd", "Add"},
                                          {"btnAddAll", "Add all"},
                                          {"btnDel", "Remove"},
                                          {"btnDelAll", "Remove all"}};
    for (auto it = toolTips.cbegin(); it != toolTips.cend(); ++it) {
        const auto *button = dialog.findChild<QAbstractButton *>(it.key());
        QCOMPARE(button->toolTip(), it.value());
        QCOMPARE(button->maximumSize(), QSize(40, 16777215));
    }
}

void TestMolkSignalSelectDialogForm::treesHaveTheirProperties()
{
    const MolkSignalSelectDialog dialog(nullptr, 0, nullptr);
    for (const char *name : {"treeWidget", "treeWidgetAddSignal"}) {
        const auto *tree = dialog.findChild<QTreeWidget *>(QLatin1String(name));
        QVERIFY(tree->isHeaderHidden());
        QCOMPARE(tree->headerItem()->text(0), QString("1"));
        QCOMPARE(tree->textElideMode(), Qt::ElideMiddle);
        QCOMPARE(tree->selectionMode(), QAbstractItemView::ExtendedSelection);
        QVERIFY(!tree->isSortingEnabled());
    }
}

void TestMolkSignalSelectDialogForm::slotsStandInOrder()
{
    const QMetaObject &object = MolkSignalSelectDialog::staticMetaObject;
    QStringList names;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        QCOMPARE(object.method(i).methodType(), QMetaMethod::Slot);
        names.append(QString::fromLatin1(object.method(i).methodSignature()));
    }
    QCOMPARE(
        names,
        QStringList({"on_pushButtonSearch_clicked()", "on_checkBoxAdvancedFilter_toggled(bool)",
                     "onAddSignal()", "onAddAllSignal()", "onDelSignal()", "onDelAllSignal()"}));
}

// The picture's one colour.
static QString colorOf(const QIcon &icon)
{
    return QColor(icon.pixmap(4, 4).toImage().pixel(2, 2)).name();
}

void TestMolkSignalSelectDialogForm::picturesAreTheHosts()
{
    const Design design = searchDesign();
    SearchFixture f(design.get());
    QCOMPARE(colorOf(f.find<QAbstractButton>("pushButtonSearch")->icon()), QString("#0000ff"));

    // Levels of the design have one picture where a search starts and another one in its results.
    f.click("checkBoxAdvancedFilter");
    f.click("checkBoxIncludeSubentries");
    f.click("checkBoxHierarchyView");
    for (QTreeWidgetItemIterator it(f.scopeTree()); *it; ++it)
        QCOMPARE(colorOf((*it)->icon(0)), QString("#ffff00"));
    f.searchFor("full");
    const QTreeWidgetItem *row = f.results->topLevelItem(0);
    for (; row->childCount() > 0; row = row->child(0))
        QCOMPARE(colorOf(row->icon(0)), QString("#ff00ff"));
    QVERIFY(row->icon(0).isNull());
}

MOLK_TEST_MAIN(TestMolkSignalSelectDialogForm)

#include "tst_molksignalselectdialog_form.moc"
