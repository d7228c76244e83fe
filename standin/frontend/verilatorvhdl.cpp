// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The part of VerilatorReading that brings VHDL and Verilog together.

#include "frontend/verilatorreading.h"

#include "frontend/progress.h"
#include "frontend/sourceplaces.h"
#include "frontend/toollog.h"
#include "frontend/verilogscanner.h"
#include "frontend/verilogtext.h"
#include "frontend/verilogtokens.h"
#include "netlist/xmldesignreader.h"

#include <QMap>

#include <algorithm>

namespace Standin {

bool VerilatorReading::isVhdlTop(const QString &top) const
{
    const ScannedModule *module = design.find(top.toUtf8());
    return module && module->isVhdl;
}

/// By offset: how many characters give way, and to what.
using TextEdits = QMap<quint32, QPair<int, QByteArray>>;

// Each set of generics of an entity takes a run of GHDL.
static const int mostVariants = 32;

static QByteArray typeOfGeneric(const ScannedModule &entity, const QByteArray &name)
{
    for (int i = 0; i < entity.parameterTypes.size(); ++i) {
        if (entity.parameters.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return entity.parameterTypes.at(i);
    }
    return QByteArray();
}

static bool isLogic(const QByteArray &type)
{
    return type == "std_logic" || type == "std_ulogic" || type == "bit";
}

/// \a value as GHDL takes it for a generic of \a type; empty if it is nothing of the kind, or if
/// GHDL takes none of that type.
static QByteArray genericValue(const QByteArray &value, const QByteArray &type)
{
    if (value.startsWith('"') && value.size() >= 2)
        return value.mid(1, value.size() - 2);
    if (type == "real" || type == "time")
        return QByteArray();
    const bool isVector = type.endsWith("_vector") || type == "unsigned" || type == "signed";
    const QByteArray digits = value.toLower().replace("_", "");
    bool isNumber = false;
    qint64 number = digits.toLongLong(&isNumber);
    int width = 0;
    if (!isNumber) {
        const VerilogConstant constant = parseVerilogConstant(QString::fromLatin1(digits));
        const bool isKnown = !constant.hasZ && !digits.contains('x') && !digits.contains('?');
        if (constant.width < 0 || constant.width > 63 || !isKnown)
            return QByteArray();
        number = qint64(constant.value);
        width = constant.width;
    }
    // A vector takes a digit for each element, and only constants with a width tell how many.
    if (isVector)
        return QByteArray::number(quint64(number), 2).right(width).rightJustified(width, '0');
    if (type == "boolean")
        return number == 0 ? "false" : "true";
    if (isLogic(type))
        return number == 0 ? "'0'" : "'1'";
    return QByteArray::number(number);
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
        const QByteArray type = typeOfGeneric(entity, name);
        const QByteArray value = genericValue(parameter.value, type);
        const QString instance =
            "WARNING: the instance \"" + printable(QString::fromUtf8(use.name));
        const QString ofEntity = printable(QString::fromUtf8(entity.name));
        if (type.isEmpty())
            log->append(instance + "\" gives a generic that \"" + ofEntity + "\" doesn't have");
        else if (value.isEmpty())
            log->append(instance + "\" gives a generic of \"" + ofEntity
                        + "\" a value that is no plain number; the default stays");
        else
            generics.append({QString::fromUtf8(name), QString::fromUtf8(value)});
    }
    return generics;
}

/// The generics of the project for the top, in which true is 1.
QVector<Setting> VerilatorReading::genericsOfTop(const ScannedModule &entity) const
{
    QVector<Setting> generics = sources.generics;
    for (Setting &generic : generics) {
        const QByteArray type = typeOfGeneric(entity, generic.name.toUtf8());
        const bool isTruth = generic.value == "1" || generic.value == "0";
        if (isTruth && (type == "boolean" || isLogic(type)))
            generic.value = QString::fromLatin1(genericValue(generic.value.toLatin1(), type));
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
    const QVector<Setting> generics =
        use ? genericsOf(*scanned, *use, log) : genericsOfTop(*scanned);
    if (!ghdl.synthesize(scanned->name, generics, &result, log))
        return false;
    const ScannedModule *module = nullptr;
    QSet<QByteArray> added;
    for (const ScannedModule &candidate : result.graph.all()) {
        const bool isEntity = candidate.name.compare(scanned->name, Qt::CaseInsensitive) == 0;
        if (isEntity)
            module = &candidate;
        // What several entities have below them comes with each of them.
        if (isEntity || !translatedModules.contains(candidate.name))
            added.insert(candidate.name);
        if (!isEntity)
            translatedModules.insert(candidate.name);
    }
    result.text = withModules(result.text, result.graph, added);
    const QByteArray wanted = use ? use->type : calledAs.toUtf8();
    translatedModules.insert(wanted);
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

/// What tells instances apart that need a module each: the entity and the values of its generics.
static QByteArray useWithGenerics(const InstanceUse &use)
{
    QByteArray key = use.type;
    for (const ConnectionUse &parameter : use.parameters)
        key += '\0' + parameter.name + '=' + parameter.value;
    return key;
}

/// True if the instance stands in the same statement as the one ahead of it, which has the
/// generics.
static bool isContinued(const ScannedModule &module, int instance)
{
    return instance > 0
        && module.instances.at(instance - 1).typeOffset == module.instances.at(instance).typeOffset;
}

/// Notes in \a edits how the ports that stand in the list that begins at \a open have to be
/// spelled. What stands in the connections themselves are names of Verilog, which stay as they are.
static void spellPorts(const VerilogTokens &tokens, int open,
                       const QHash<QByteArray, QByteArray> &spelling, TextEdits *edits)
{
    const int close = tokens.behind(open) - 1;
    for (int i = open + 1; i < close; i = tokens.behind(i)) {
        const bool isNamed = tokens.is(i, '.') && (i == open + 1 || tokens.is(i - 1, ','));
        if (!isNamed || !tokens.isWord(i + 1))
            continue;
        const QByteArray port = tokens.text(i + 1);
        const QByteArray spelled = spelling.value(port.toLower(), port);
        if (spelled == port)
            continue;
        const VerilogToken &word = tokens.at(i + 1);
        if (tokens.is(i + 2, '(')) {
            edits->insert(word.begin, {port.size(), spelled});
            continue;
        }
        // A name alone stands for the net of that name as well.
        edits->insert(tokens.at(i).begin, {1, '.' + spelled + '('});
        edits->insert(word.begin + word.length, {0, " )"});
    }
}

// In one pass: each replacement in place would move all the text behind it.
static QByteArray withEdits(const QByteArray &text, const TextEdits &edits)
{
    QByteArray edited;
    edited.reserve(text.size() + text.size() / 8);
    int at = 0;
    for (auto edit = edits.cbegin(); edit != edits.cend(); ++edit) {
        edited.append(text.constData() + at, int(edit.key()) - at);
        edited += edit->second;
        at = int(edit.key()) + edit->first;
    }
    return edited.append(text.constData() + at, text.size() - at);
}

static QString lineKey(const QString &file, int line)
{
    return file + ':' + QString::number(line);
}

/// The lines that become longer by \a edits of \a text, as PreprocessedText has them.
static QHash<QString, QVector<QPair<int, int>>> widenedLines(const TextEdits &edits,
                                                             const QByteArray &text)
{
    QHash<QString, QVector<QPair<int, int>>> widened;
    const SourcePlaces places(text);
    const SourcePlaces::Stretch *stretch = nullptr;
    quint32 at = 0;
    quint32 lineBegin = 0;
    int line = 0;
    for (auto edit = edits.cbegin(); edit != edits.cend(); ++edit) {
        const SourcePlaces::Stretch *const here = places.stretchAt(edit.key());
        const int growth = edit->second.size() - edit->first;
        if (!here || growth == 0)
            continue;
        if (here != stretch) {
            stretch = here;
            at = lineBegin = here->begin;
            line = here->line;
        }
        for (; at < edit.key(); ++at) {
            if (text.at(int(at)) == '\n') {
                ++line;
                lineBegin = at + 1;
            }
        }
        // A file that is included again brings the same lines again.
        QVector<QPair<int, int>> &ofLine = widened[lineKey(here->file, line)];
        const auto column = int(edit.key() - lineBegin);
        if (ofLine.isEmpty() || ofLine.last().first < column)
            ofLine.append({column, growth});
    }
    return widened;
}

/// \a message with the column that the user's file has, where fitInstances() made lines longer.
ToolMessage VerilatorReading::asInSources(const ToolMessage &message) const
{
    ToolMessage told = message;
    if (preprocessed.widened.isEmpty())
        return told;
    const auto places = preprocessed.widened.value(lineKey(message.file, message.line));
    for (const QPair<int, int> &place : places) {
        if (told.column - 1 > place.first)
            told.column = std::max(place.first + 1, told.column - place.second);
    }
    return told;
}

/// Leads each instance of an entity in the Verilog text to the module that was made for its
/// generics, and spells its ports as the entity does, since VHDL knows no case.
void VerilatorReading::fitInstances()
{
    if (entityModules.isEmpty())
        return;
    const VerilogTokens tokens(preprocessed.text);
    TextEdits edits;
    for (const ScannedModule &module : preprocessed.graph.all()) {
        for (int number = 0; number < module.instances.size(); ++number) {
            const InstanceUse &use = module.instances.at(number);
            const ScannedModule *entity = design.find(use.type);
            const int type = tokens.find(use.typeOffset);
            if (isContinued(module, number) || !entity || !entity->isVhdl
                || tokens.text(type) != use.type)
                continue;
            const QByteArray wanted = entityModules.value(useWithGenerics(use), use.type);
            if (wanted != use.type)
                edits.insert(tokens.at(type).begin, {use.type.size(), wanted});
            QHash<QByteArray, QByteArray> spelling;
            for (const QByteArray &port : entity->ports)
                spelling.insert(port.toLower(), port);
            for (int i = type; i < tokens.count() && !tokens.is(i, ';'); i = tokens.behind(i)) {
                if (tokens.is(i, '(') && !tokens.is(i - 1, '#'))
                    spellPorts(tokens, i, spelling, &edits);
            }
        }
    }
    if (edits.isEmpty())
        return;
    preprocessed.widened = widenedLines(edits, preprocessed.text);
    preprocessed.text = withEdits(preprocessed.text, edits);
    preprocessed.graph = scanVerilog(preprocessed.text);
}

/// Translates the entities that are the top or that Verilog modules below the top instantiate.
bool VerilatorReading::translateVhdl(const QString &top, Artifact *artifact, QStringList *log)
{
    // What there is to say of an entity is said for each set of generics.
    QStringList said;
    const bool goesOn = translateEntities(top, artifact, &said);
    said.removeDuplicates();
    *log += said;
    artifact->vhdlFiles = translatedFiles;
    return goesOn;
}

bool VerilatorReading::translateEntities(const QString &top, Artifact *artifact, QStringList *log)
{
    if (isVhdlTop(top) && !addEntity(top.toUtf8(), nullptr, top, artifact, log))
        return false;
    const auto names = design.modulesBelow(top.toUtf8());
    for (const QString &name : names) {
        const ScannedModule *module = design.find(name.toUtf8());
        if (module->isVhdl)
            continue;
        for (int i = 0; i < module->instances.size(); ++i) {
            const InstanceUse &use = module->instances.at(i);
            const ScannedModule *type = design.find(use.type);
            if (isContinued(*module, i) || !type || !type->isVhdl
                || entityModules.contains(useWithGenerics(use)))
                continue;
            // The first one keeps its name, so that what isn't told apart finds it.
            InstanceUse named = use;
            const int variants = entityVariants[use.type]++;
            if (variants >= mostVariants) {
                log->append("WARNING: the entity \"" + printable(QString::fromUtf8(type->name))
                            + "\" has more sets of generics than can be told apart");
                continue;
            }
            if (variants > 0)
                named.type += "_molk" + QByteArray::number(variants);
            entityModules.insert(useWithGenerics(use), named.type);
            // What can't be translated is a black box to the modules around it.
            addEntity(type->name, &named, QString(), artifact, log);
            if (progress.isCancelled())
                return false;
        }
    }
    return true;
}

} // namespace Standin
