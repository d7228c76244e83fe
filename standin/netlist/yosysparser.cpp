// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "netlist/jsonbrackets.h"
#include "netlist/yosysmodule.h"

#include <QFile>
#include <QFileInfo>

// The operators that would throw aren't even declared.
#define SIMDJSON_EXCEPTIONS 0
#include <simdjson.h>

namespace Standin {

using namespace simdjson;

// The text and the parser's tables together stay well below the memory of a small machine.
static constexpr qint64 MaximumFile = qint64(1) << 30;

static QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

// Calls act(key, value) for each field. Whatever value act leaves alone is passed over.
template<typename Act>
static error_code eachField(ondemand::value value, Act act)
{
    ondemand::object object;
    if (const error_code error = value.get_object().get(object))
        return error;
    for (auto entry : object) {
        ondemand::field field;
        if (const error_code error = std::move(entry).get(field))
            return error;
        std::string_view key;
        if (const error_code error = field.unescaped_key().get(key))
            return error;
        if (const error_code error = act(key, field.value()))
            return error;
    }
    return SUCCESS;
}

class YosysParser
{
public:
    explicit YosysParser(YosysDesign *result, qint64 fileSize)
        : design(result)
        , bitLimit(fileSize)
    {
    }

    error_code readModule(std::string_view name, ondemand::value value);

private:
    error_code readModuleAttributes(ondemand::value value, YosysModule *module);
    error_code readPort(std::string_view name, ondemand::value value, YosysModule *module);
    error_code readCell(std::string_view name, ondemand::value value, YosysModule *module);
    error_code readCellAttributes(ondemand::value value, YosysCell *cell);
    error_code readParameters(ondemand::value value, YosysCell *cell);
    error_code readNet(std::string_view name, ondemand::value value, YosysModule *module);
    error_code readBits(ondemand::value value, YosysBits *bits);
    YosysPort *portOf(YosysCell *cell, std::string_view name);
    YosysPlace place(std::string_view source);
    quint32 intern(std::string_view text) { return design->names.intern(toText(text)); }

    YosysDesign *design;
    qint64 bitLimit;
    StringInterner files;
};

// Attributes are texts of zeros and ones, or numbers in files of other writers.
static bool isSet(ondemand::value value)
{
    std::string_view text;
    if (value.get_string().get(text) == SUCCESS)
        return text.find('1') != std::string_view::npos;
    std::uint64_t number = 0;
    return value.get_uint64().get(number) == SUCCESS && number != 0;
}

static QString textOf(ondemand::value value)
{
    std::string_view text;
    return value.get_string().get(text) == SUCCESS ? toText(text) : QString();
}

static PortDirection direction(ondemand::value value)
{
    std::string_view text;
    if (value.get_string().get(text) != SUCCESS)
        return PortDirection::None;
    if (text == "input")
        return PortDirection::In;
    return text == "output" ? PortDirection::Out : PortDirection::InOut;
}

error_code YosysParser::readModule(std::string_view name, ondemand::value value)
{
    YosysModule module;
    module.name = intern(name);
    module.sourceName = yosysSourceName(toText(name));
    const error_code error = eachField(value, [&](std::string_view key, ondemand::value part) {
        if (key == "attributes")
            return readModuleAttributes(part, &module);
        if (key == "ports")
            return eachField(part, [&](std::string_view port, ondemand::value each) {
                return readPort(port, each, &module);
            });
        if (key == "cells")
            return eachField(part, [&](std::string_view cell, ondemand::value each) {
                return readCell(cell, each, &module);
            });
        if (key == "netnames")
            return eachField(part, [&](std::string_view net, ondemand::value each) {
                return readNet(net, each, &module);
            });
        return SUCCESS;
    });
    design->moduleByName.insert(module.name, int(design->modules.size()));
    design->modules.push_back(std::move(module));
    return error;
}

error_code YosysParser::readModuleAttributes(ondemand::value value, YosysModule *module)
{
    return eachField(value, [&](std::string_view key, ondemand::value attribute) {
        if (key == "hdlname")
            module->sourceName = yosysSourceName(textOf(attribute));
        else if (key == "top")
            module->isTop = isSet(attribute);
        else if (key == "blackbox" || key == "whitebox")
            module->isBlackBox = module->isBlackBox || isSet(attribute);
        return SUCCESS;
    });
}

error_code YosysParser::readPort(std::string_view name, ondemand::value value, YosysModule *module)
{
    YosysPort port{};
    port.name = intern(name);
    const error_code error = eachField(value, [&](std::string_view key, ondemand::value part) {
        if (key == "bits")
            return readBits(part, &port.bits);
        if (key == "direction")
            port.direction = direction(part);
        return SUCCESS;
    });
    module->ports.push_back(port);
    return error;
}

error_code YosysParser::readCell(std::string_view name, ondemand::value value, YosysModule *module)
{
    YosysCell cell;
    cell.name = toText(name);
    const error_code error = eachField(value, [&](std::string_view key, ondemand::value part) {
        if (key == "hide_name")
            cell.isHidden = isSet(part);
        else if (key == "type")
            cell.type = design->names.intern(textOf(part));
        else if (key == "attributes")
            return readCellAttributes(part, &cell);
        else if (key == "parameters")
            return readParameters(part, &cell);
        else if (key == "port_directions")
            return eachField(part, [&](std::string_view port, ondemand::value each) {
                portOf(&cell, port)->direction = direction(each);
                return SUCCESS;
            });
        else if (key == "connections")
            return eachField(part, [&](std::string_view port, ondemand::value each) {
                return readBits(each, &portOf(&cell, port)->bits);
            });
        return SUCCESS;
    });
    module->cells.push_back(std::move(cell));
    return error;
}

error_code YosysParser::readCellAttributes(ondemand::value value, YosysCell *cell)
{
    return eachField(value, [&](std::string_view key, ondemand::value attribute) {
        if (key == "is_interface") {
            cell->isInterface = isSet(attribute);
        } else if (key == "hdlname") {
            cell->path = textOf(attribute);
        } else if (key == "module_hdlname" || (key == "module" && cell->scopeModule.isEmpty())) {
            cell->scopeModule = yosysSourceName(textOf(attribute));
        } else if (key == "src") {
            std::string_view source;
            if (attribute.get_string().get(source) == SUCCESS) {
                cell->place = place(source);
                cell->isVhdl = source.find(".vhd") != std::string_view::npos;
            }
        }
        return SUCCESS;
    });
}

error_code YosysParser::readParameters(ondemand::value value, YosysCell *cell)
{
    return eachField(value, [&](std::string_view key, ondemand::value parameter) {
        if (key == "RD_CLK_ENABLE" || key == "CLK_ENABLE")
            cell->readIsClocked = isSet(parameter);
        if (key == "WR_CLK_ENABLE" || key == "CLK_ENABLE")
            cell->writeIsClocked = key == "CLK_ENABLE" ? cell->readIsClocked : isSet(parameter);
        return SUCCESS;
    });
}

error_code YosysParser::readNet(std::string_view name, ondemand::value value, YosysModule *module)
{
    YosysNet net;
    net.name = toText(name);
    bool isHidden = false;
    const error_code error = eachField(value, [&](std::string_view key, ondemand::value part) {
        std::int64_t number = 0;
        if (key == "hide_name") {
            isHidden = isSet(part);
        } else if (key == "bits") {
            return readBits(part, &net.bits);
        } else if (key == "offset") {
            net.hasRange = true;
            if (part.get_int64().get(number) == SUCCESS && number > INT32_MIN / 2
                && number < INT32_MAX / 2)
                net.offset = qint32(number);
        } else if (key == "upto") {
            net.goesUp = isSet(part);
            net.hasRange = true;
        } else if (key == "attributes") {
            return eachField(part, [&](std::string_view attribute, ondemand::value each) {
                std::string_view text;
                if (attribute == "hdlname")
                    net.path = textOf(each);
                else if (attribute == "src" && each.get_string().get(text) == SUCCESS)
                    net.place = place(text);
                return SUCCESS;
            });
        }
        return SUCCESS;
    });
    const bool isMadeUp =
        isHidden || net.name.startsWith('$') || net.name.contains(QLatin1String("$func$"));
    if (!isMadeUp)
        module->nets.push_back(std::move(net));
    return error;
}

error_code YosysParser::readBits(ondemand::value value, YosysBits *bits)
{
    ondemand::array array;
    if (const error_code error = value.get_array().get(array))
        return error;
    bits->begin = quint32(design->bits.size());
    for (auto entry : array) {
        ondemand::value bit;
        if (const error_code error = entry.get(bit))
            return error;
        std::int64_t number = 0;
        std::string_view text;
        if (bit.get_int64().get(number) == SUCCESS) {
            // Every bit is named at least once, so the numbers can't exceed the file's size.
            if (number < 0 || number > bitLimit)
                return NUMBER_OUT_OF_RANGE;
            design->highestBit = qMax(design->highestBit, qint32(number));
            design->bits.push_back(qint32(number));
        } else if (const error_code error = bit.get_string().get(text)) {
            return error;
        } else {
            design->bits.push_back(text == "0"       ? YosysDesign::Zero
                                       : text == "1" ? YosysDesign::One
                                       : text == "z" ? YosysDesign::HighImpedance
                                                     : YosysDesign::Undefined);
        }
    }
    bits->count = quint32(design->bits.size()) - bits->begin;
    return SUCCESS;
}

YosysPort *YosysParser::portOf(YosysCell *cell, std::string_view name)
{
    const quint32 number = intern(name);
    for (YosysPort &port : cell->ports) {
        if (port.name == number)
            return &port;
    }
    cell->ports.push_back({number, PortDirection::None, {}});
    return &cell->ports.back();
}

// "a.v:3.4-5.6|b.v:7.8-9.10" gives file, line and column of each place.
YosysPlace YosysParser::place(std::string_view source)
{
    YosysPlace result;
    const QString text = toText(source);
    const auto parts = QStringView(text).split(QLatin1Char('|'));
    for (QStringView part : parts) {
        const auto colon = part.lastIndexOf(QLatin1Char(':'));
        const QStringView position = part.mid(colon + 1);
        const QStringView start = position.left(position.indexOf(QLatin1Char('-')));
        const auto dot = start.indexOf(QLatin1Char('.'));
        result.push_back(qint32(files.intern(part.left(qMax<qsizetype>(0, colon)))));
        result.push_back(start.left(dot < 0 ? start.size() : dot).toInt());
        result.push_back(dot < 0 ? 0 : start.mid(dot + 1).toInt());
    }
    return result;
}

bool parseYosysJson(const QString &file, YosysDesign *design, QString *error)
{
    const auto fail = [&](const QString &reason) {
        *error = QStringLiteral("%1: %2").arg(file, reason);
        return false;
    };
    const QFileInfo info(file);
    if (!info.isFile())
        return fail(QStringLiteral("No such file"));
    if (info.size() > MaximumFile)
        return fail(QStringLiteral("The file is too large"));
    padded_string text;
    if (const error_code code =
            padded_string::load(QFile::encodeName(file).toStdString()).get(text))
        return fail(QString::fromLatin1(error_message(code)));

    const std::string_view whole(text.data(), text.size());
    const QString fault = faultOfJsonBrackets(whole);
    if (!fault.isNull()) {
        *error = QStringLiteral("%1:%2").arg(file, fault);
        return false;
    }

    ondemand::parser parser;
    ondemand::document document;
    ondemand::value root;
    const auto failAt = [&](error_code code) {
        const char *location = nullptr;
        const QString reason = QString::fromLatin1(error_message(code));
        if (document.current_location().get(location) != SUCCESS || location < text.data())
            return fail(reason);
        *error = QStringLiteral("%1:%2: %3")
                     .arg(file, placeInText(whole, std::size_t(location - text.data())), reason);
        return false;
    };
    if (const error_code code = parser.iterate(text).get(document))
        return fail(QString::fromLatin1(error_message(code)));
    bool hasModules = false;
    YosysParser reader(design, info.size());
    error_code code = document.get_value().get(root);
    if (!code) {
        code = eachField(root, [&](std::string_view key, ondemand::value value) {
            if (key != "modules" || hasModules)
                return SUCCESS;
            hasModules = true;
            return eachField(value, [&](std::string_view name, ondemand::value module) {
                return reader.readModule(name, module);
            });
        });
    }
    if (code)
        return failAt(code);
    if (!hasModules)
        return fail(QStringLiteral("This is not a netlist of Yosys"));
    return true;
}

} // namespace Standin
