// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "formlines.h"

#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QMetaEnum>
#include <QSplitter>
#include <QVariant>
#include <QWidget>

static void appendBelow(QStringList *lines, const QWidget *widget, const QString &indent);

template<typename Enum>
static QString nameOf(Enum value)
{
    return QLatin1String(QMetaEnum::fromType<Enum>().valueToKey(value));
}

static QString policies(const QSizePolicy &policy)
{
    return nameOf(policy.horizontalPolicy()) + " x " + nameOf(policy.verticalPolicy());
}

static QString widgetLine(const QWidget *widget)
{
    const QString type = QLatin1String(widget->metaObject()->className());
    QString line = type + " " + widget->objectName();
    const auto *frame = qobject_cast<const QFrame *>(widget);
    if (frame && type == "QFrame")
        line += " " + nameOf(frame->frameShape()) + " " + nameOf(frame->frameShadow());
    for (const char *property : {"text", "title"}) {
        const QString text = widget->property(property).toString();
        if (!text.isEmpty())
            line += " \"" + text + '"';
    }
    return line;
}

static QString spacerLine(QSpacerItem *spacer)
{
    const QSize size = spacer->sizeHint();
    return QString("spacer %1 x %2 ").arg(size.width()).arg(size.height())
        + policies(spacer->sizePolicy());
}

static QString layoutLine(const QLayout *layout)
{
    const QString line =
        QLatin1String(layout->metaObject()->className()) + " " + layout->objectName();
    const QMargins margins = layout->contentsMargins();
    QStringList sides;
    for (int side : {margins.left(), margins.top(), margins.right(), margins.bottom()})
        sides.append(side == 0 ? "0" : "-");
    return sides.contains("0") ? line + " margins " + sides.join(' ') : line;
}

static QString cell(const QLayout *layout, int index)
{
    const auto *grid = qobject_cast<const QGridLayout *>(layout);
    if (!grid)
        return QString();
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(index, &row, &column, &rows, &columns);
    const QString place = QString("%1,%2").arg(row).arg(column);
    return (columns > 1 ? place + QString("+%1").arg(columns) : place) + " ";
}

static void appendLayout(QStringList *lines, QLayout *layout, const QString &indent)
{
    lines->append(indent + layoutLine(layout));
    for (int i = 0; i < layout->count(); ++i) {
        const QString start = indent + "  " + cell(layout, i);
        if (QSpacerItem *spacer = layout->itemAt(i)->spacerItem()) {
            lines->append(start + spacerLine(spacer));
        } else if (const QWidget *widget = layout->itemAt(i)->widget()) {
            lines->append(start + widgetLine(widget));
            appendBelow(lines, widget, indent + "    ");
        }
    }
}

static void appendBelow(QStringList *lines, const QWidget *widget, const QString &indent)
{
    if (const auto *splitter = qobject_cast<const QSplitter *>(widget)) {
        for (int i = 0; i < splitter->count(); ++i) {
            lines->append(indent + widgetLine(splitter->widget(i)));
            appendBelow(lines, splitter->widget(i), indent + "  ");
        }
    } else if (widget->layout() && !widget->layout()->objectName().isEmpty()) {
        appendLayout(lines, widget->layout(), indent);
    }
}

QStringList formLines(const QWidget *root)
{
    QStringList lines;
    appendBelow(&lines, root, QString());
    return lines;
}

TranslatedTexts::TranslatedTexts()
{
    QCoreApplication::installTranslator(this);
}

TranslatedTexts::~TranslatedTexts()
{
    QCoreApplication::removeTranslator(this);
}

QString TranslatedTexts::translate(const char *context, const char *sourceText, const char *,
                                   int) const
{
    texts.append({QString::fromUtf8(context), QString::fromUtf8(sourceText)});
    return QString();
}

QStringList TranslatedTexts::textsOf(const QString &context) const
{
    QStringList found;
    for (const Text &text : qAsConst(texts)) {
        if (text.context == context)
            found.append(text.text);
    }
    return found;
}
