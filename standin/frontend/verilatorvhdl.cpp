// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of VerilatorReading that brings VHDL and Verilog together.

#include "frontend/verilatorreading.h"

#include "frontend/progress.h"
#include "frontend/verilogtext.h"

namespace Standin {

bool VerilatorReading::isVhdlTop(const QString &top) const
{
    const ScannedModule *module = design.find(top.toUtf8());
    return module && module->isVhdl;
}

/// The values that an instance in Verilog gives to generics. Only plain numbers and strings can be
/// carried over; other generics keep their defaults.
QVector<Setting> VerilatorReading::genericsOf(const ScannedModule &entity, const InstanceUse &use,
                                              QStringList *log) const
{
    QVector<Setting> generics;
    for (int i = 0; i < use.parameters.size(); ++i) {
        const ConnectionUse &parameter = use.parameters.at(i);
        const QByteArray name =
            parameter.name.isEmpty() ? entity.parameters.value(i) : parameter.name;
        QByteArray value = parameter.value;
        bool isNumber = false;
        value.toLongLong(&isNumber);
        if (value.startsWith('"') && value.size() >= 2)
            value = value.mid(1, value.size() - 2);
        else if (!isNumber)
            value.clear();
        if (name.isEmpty() || value.isEmpty())
            log->append("WARNING: the instance \"" + QString::fromUtf8(use.name)
                        + "\" gives a generic of \"" + QString::fromUtf8(entity.name)
                        + "\" a value that is no plain number; the default stays");
        else
            generics.append({QString::fromUtf8(name), QString::fromUtf8(value)});
    }
    return generics;
}

/// Gives the module that begins in \a text the name \a calledAs and parameters that do nothing, so
/// that instances in Verilog, which know neither VHDL's case nor that generics have been settled,
/// fit.
static QByteArray adaptHeader(const QByteArray &text, const ScannedModule &module,
                              const QByteArray &calledAs, const InstanceUse *use)
{
    const QByteArray old = "module " + module.name;
    if (text.mid(int(module.begin), old.size()) != old)
        return text;
    QByteArray header = "module " + calledAs;
    QList<QByteArray> parameters;
    if (use) {
        for (int i = 0; i < use->parameters.size(); ++i) {
            const QByteArray name = use->parameters.at(i).name;
            parameters.append((name.isEmpty() ? "molk_generic" + QByteArray::number(i) : name)
                              + " = 0");
        }
    }
    if (!parameters.isEmpty())
        header += " #(parameter " + parameters.join(", parameter ") + ')';
    QByteArray adapted = text;
    return adapted.replace(int(module.begin), old.size(), header);
}

bool VerilatorReading::addEntity(const QByteArray &entity, const InstanceUse *use,
                                 const QString &calledAs, Artifact *artifact, QStringList *log)
{
    const ScannedModule *scanned = design.find(entity);
    SynthesizedEntity result;
    const QVector<Setting> generics = use ? genericsOf(*scanned, *use, log) : sources.generics;
    if (!ghdl.synthesize(scanned->name, generics, &result, log))
        return false;
    const ScannedModule *module = nullptr;
    for (const ScannedModule &candidate : result.graph.all()) {
        if (candidate.name.compare(scanned->name, Qt::CaseInsensitive) == 0)
            module = &candidate;
    }
    const QByteArray wanted = use ? use->type : calledAs.toUtf8();
    if (module) {
        result.text = adaptHeader(result.text, *module, wanted, use);
        // A top is known by the name that it was asked for.
        artifact->sourceNames.insert(QString::fromUtf8(wanted),
                                     use ? QString::fromUtf8(scanned->name) : calledAs);
    }
    for (auto it = result.sourceNames.begin(); it != result.sourceNames.end(); ++it) {
        if (!artifact->sourceNames.contains(it.key()))
            artifact->sourceNames.insert(it.key(), it.value());
    }
    const QString file = QString("vhdl%1.v").arg(translatedFiles.size() + 1);
    translatedFiles.append(file);
    translated += "`line 1 \"" + file.toUtf8() + "\" 0\n" + result.text + '\n';
    return true;
}

/// Translates the entities that are the top or that Verilog modules below the top instantiate.
bool VerilatorReading::translateVhdl(const QString &top, Artifact *artifact, QStringList *log)
{
    if (isVhdlTop(top) && !addEntity(top.toUtf8(), nullptr, top, artifact, log))
        return false;
    QHash<QByteArray, QVector<ConnectionUse>> done;
    const auto names = design.modulesBelow(top.toUtf8());
    for (const QString &name : names) {
        const ScannedModule *module = design.find(name.toUtf8());
        if (module->isVhdl)
            continue;
        for (const InstanceUse &use : module->instances) {
            const ScannedModule *type = design.find(use.type);
            if (!type || !type->isVhdl || done.contains(use.type))
                continue;
            done.insert(use.type, use.parameters);
            // What can't be translated is a black box to the modules around it.
            addEntity(type->name, &use, QString(), artifact, log);
            if (progress.isCancelled())
                return false;
        }
    }
    artifact->vhdlFiles = translatedFiles;
    return true;
}

} // namespace Standin
