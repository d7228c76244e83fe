// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectsettingsdialog.h"

#include "errorbox.h"
#include "pathlist.h"
#include "projectoptions.h"

#include "project/edamproject.h"

#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace Workbench {

ProjectSettingsDialog::ProjectSettingsDialog(const Standin::EdamProject &project,
                                             const FindModules &findModules, QWidget *parent)
    : QDialog(parent)
    , before(optionValues(project))
    , find(findModules)
{
    setObjectName("projectSettings");
    setWindowTitle(tr("Settings of %1").arg(project.name()));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    auto *form = new QFormLayout;
    QWidget *topRow = makeTopRow(before.value("TopModule").toString());
    form->addRow(tr("&Top module:"), topRow);
    device = new QLineEdit(before.value("Device").toString(), this);
    form->addRow(tr("De&vice:"), device);
    standard = makeStandardBox(before.value("Verilog_Standard").toString());
    form->addRow(tr("V&erilog standard:"), standard);
    tool = makeToolBox(before.value("Synthesize_tool").toString());
    form->addRow(tr("&Synthesis tool:"), tool);
    includePath = new PathList(project.directory(), this);
    includePath->setPaths(before.value("IncludePath").toStringList());
    form->addRow(tr("&Include path:"), includePath);

    device->setObjectName("device");
    device->setPlaceholderText(tr("not set"));
    device->setToolTip(tr("The device that configurations are opened for."));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    resize(QSize(560, sizeHint().height()));
}

// An editable box without a wish of its own to be filled in.
static QComboBox *makeNameBox(const QString &objectName, const QString &current, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(objectName);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->completer()->setCaseSensitivity(Qt::CaseSensitive);
    box->setEditText(current);
    return box;
}

QWidget *ProjectSettingsDialog::makeTopRow(const QString &current)
{
    auto *row = new QWidget(this);
    top = makeNameBox("topModule", current, row);
    top->lineEdit()->setPlaceholderText(tr("not set: the one module that no other uses"));
    top->setToolTip(tr("The module that the design begins with."));
    auto *button = new QPushButton(tr("&Find"), row);
    button->setObjectName("findModules");
    button->setToolTip(tr("Read the design and offer its modules"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &ProjectSettingsDialog::onFindModules);

    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(top, 1);
    layout->addWidget(button);
    row->setFocusProxy(top);
    row->setFocusPolicy(top->focusPolicy());
    return row;
}

// A standard that a project names in its own way stays as it is.
QComboBox *ProjectSettingsDialog::makeStandardBox(const QString &current)
{
    auto *box = new QComboBox(this);
    box->setObjectName("verilogStandard");
    box->setToolTip(tr("The language of Verilog files that state none themselves.\n"
                       "Without one, SystemVerilog is tried first."));
    box->addItem(tr("not set"), QString());
    const QVector<ProjectOption> standards = verilogStandards();
    for (const ProjectOption &known : standards)
        box->addItem(known.title + " (" + known.name + ")", known.name);
    if (box->findData(current) < 0)
        box->addItem(current, current);
    box->setCurrentIndex(box->findData(current));
    return box;
}

QComboBox *ProjectSettingsDialog::makeToolBox(const QString &current)
{
    QComboBox *box = makeNameBox("synthesisTool", current, this);
    box->addItems(synthesisTools());
    box->setEditText(current);
    box->lineEdit()->setPlaceholderText(tr("not set"));
    box->setToolTip(tr("The tool that synthesizes the design.\n"
                       "Configurations can be saved for OndrelSynthesis only."));
    return box;
}

void ProjectSettingsDialog::focusOption(const QString &name)
{
    const QMap<QString, QWidget *> fields{{"Device", device},
                                          {"Verilog_Standard", standard},
                                          {"Synthesize_tool", tool},
                                          {"IncludePath", includePath}};
    fields.value(name, top)->setFocus();
}

QVariantMap ProjectSettingsDialog::values() const
{
    return {{"TopModule", top->currentText().trimmed()},
            {"Device", device->text().trimmed()},
            {"Verilog_Standard", standard->currentData()},
            {"Synthesize_tool", tool->currentText().trimmed()},
            {"IncludePath", includePath->paths()}};
}

QVariantMap ProjectSettingsDialog::changes() const
{
    return optionChanges(before, values());
}

void ProjectSettingsDialog::onFindModules()
{
    const QPointer<ProjectSettingsDialog> guarded = this;
    const QStringList modules = find(this);
    if (!guarded)
        return;
    const QString typed = top->currentText();
    top->clear();
    top->addItems(modules);
    top->setCurrentIndex(top->findText(typed, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    top->setEditText(typed);
    top->setFocus();
    if (modules.isEmpty())
        showError(this, tr("No module was found. The messages of the window tell why."));
    else
        top->showPopup();
}

} // namespace Workbench
