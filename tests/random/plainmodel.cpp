// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "plainmodel.h"

namespace Plain {

int widthOf(const Items &items)
{
    int width = 0;
    for (const Signal &item : items)
        width += item.width();
    return width;
}

QStringList singleNames(const Items &items)
{
    QStringList names;
    for (const Signal &item : items) {
        if (item.members.isEmpty())
            names.append(item.name);
        for (const Signal &bit : item.members)
            names.append(bit.name);
    }
    return names;
}

static QString attribute(const QString &name, const QString &text)
{
    return ' ' + name + "=\"" + text.toHtmlEscaped() + '"';
}

static QString elementOf(const Signal &item)
{
    if (item.kind == 0)
        return "net";
    if (item.kind == 1)
        return item.members.isEmpty() ? "bit" : "bus";
    return "signal";
}

// One element with what stands in it, or closed at once if nothing does.
static QString element(int depth, const QString &name, const QString &attributes,
                       const QString &content)
{
    const QString indent(depth * 4, QLatin1Char(' '));
    const QString opening = indent + '<' + name + attributes;
    if (content.isEmpty())
        return opening + "/>\n";
    return opening + ">\n" + content + indent + "</" + name + ">\n";
}

static QString itemsText(const Items &items, int depth)
{
    QString text;
    for (const Signal &item : items) {
        QString attributes = attribute("name", item.name);
        if (!item.alias.isNull())
            attributes += attribute("alias", item.alias);
        if (!item.selectable)
            attributes += attribute("selectable", "false");
        if (!item.found)
            attributes += attribute("found", "false");
        if (elementOf(item) == "signal" && item.kind != -1)
            attributes += attribute("kind", QString::number(item.kind));
        text += element(depth, elementOf(item), attributes, itemsText(item.members, depth + 1));
    }
    return text;
}

static QString coreText(const Core &core)
{
    QString attributes;
    if (!core.module.isEmpty())
        attributes += attribute("module", core.module);
    if (!core.clock.isEmpty())
        attributes += attribute("userClock", core.clock);
    if (core.useClock)
        attributes += attribute("useUserClock", "true");

    QString content;
    for (const Port &port : core.ins)
        content += element(2, "probeIn", QString(), itemsText(port.items, 3));
    for (const Port &port : core.outs) {
        const QString value = port.value == "0x0" ? QString() : attribute("value", port.value);
        content += element(2, "probeOut", value, itemsText(port.items, 3));
    }
    return element(1, "core", attributes, content);
}

QByteArray fileText(const Configuration &configuration)
{
    QString content = "    <Version>1.0</Version>\n";
    for (const Core &core : configuration)
        content += coreText(core);
    const QString text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element(0, "MOLK_CONFIG", "", content);
    return text.toUtf8();
}

static void addItems(QStringList *lines, const Items &items, int depth)
{
    for (const Signal &item : items) {
        const QString alias = item.alias.isNull() ? QString("null") : '"' + item.alias + '"';
        lines->append(QString(depth * 2, QLatin1Char(' ')) + '"' + item.name + "\" alias=" + alias
                      + " selectable=" + QString::number(item.selectable) + " found="
                      + QString::number(item.found) + " kind=" + QString::number(item.kind));
        addItems(lines, item.members, depth + 1);
    }
}

QStringList linesOf(const Configuration &configuration)
{
    QStringList lines;
    for (int i = 0; i < configuration.size(); ++i) {
        const Core &core = configuration.at(i);
        lines.append("core " + QString::number(i) + " module=\"" + core.module + "\" clock=\""
                     + core.clock + "\" useUserClock=" + QString::number(core.useClock));
        for (int port = 0; port < core.ins.size(); ++port) {
            lines.append("  in " + QString::number(port));
            addItems(&lines, core.ins.at(port).items, 2);
        }
        for (int port = 0; port < core.outs.size(); ++port) {
            lines.append("  out " + QString::number(port) + " value=\"" + core.outs.at(port).value
                         + '"');
            addItems(&lines, core.outs.at(port).items, 2);
        }
    }
    return lines;
}

} // namespace Plain
