// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "projectoptions.h"

#include "project/edamproject.h"

#include <QCoreApplication>

namespace Workbench {

static QString tr(const char *text)
{
    return QCoreApplication::translate("Workbench::ProjectPanel", text);
}

QVector<ProjectOption> projectOptions()
{
    return {{"TopModule", tr("Top module")},
            {"Device", tr("Device")},
            {"Verilog_Standard", tr("Verilog standard")},
            {"Synthesize_tool", tr("Synthesis tool")},
            {"IncludePath", tr("Include path")}};
}

QVariantMap optionValues(const Standin::EdamProject &project)
{
    QVariantMap values;
    const QVector<ProjectOption> options = projectOptions();
    for (const ProjectOption &option : options)
        values.insert(option.name, project.option(option.name));
    return values;
}

QString optionText(const QVariant &value)
{
    const QString text = value.toStringList().join(", ");
    return text.isEmpty() ? tr("not set") : text;
}

static QVariant normalized(const QVariant &value)
{
    const QStringList texts = value.toStringList();
    return texts.join(QString()).isEmpty() ? QVariant() : value;
}

QVariantMap optionChanges(const QVariantMap &before, const QVariantMap &after)
{
    QVariantMap changes;
    for (auto entry = after.cbegin(); entry != after.cend(); ++entry) {
        const QVariant value = normalized(*entry);
        if (value != normalized(before.value(entry.key())))
            changes.insert(entry.key(), value);
    }
    return changes;
}

QVector<ProjectOption> verilogStandards()
{
    return {{"1364-1995", "Verilog 1995"},       {"1364-2001", "Verilog 2001"},
            {"1364-2005", "Verilog 2005"},       {"1800-2005", "SystemVerilog 2005"},
            {"1800-2009", "SystemVerilog 2009"}, {"1800-2012", "SystemVerilog 2012"},
            {"1800-2017", "SystemVerilog 2017"}};
}

QStringList synthesisTools()
{
    return {"OndrelSynthesis", "Synplify"};
}

} // namespace Workbench
