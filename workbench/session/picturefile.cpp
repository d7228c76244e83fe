// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "picturefile.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <limits>

namespace Workbench {

// Colours that differ by less look the same to the eye.
static constexpr int leastDistance = 150;

static int distance(QRgb a, QRgb b)
{
    const int red = qRed(a) - qRed(b);
    const int green = qGreen(a) - qGreen(b);
    const int blue = qBlue(a) - qBlue(b);
    return red * red + green * green + blue * blue;
}

static int nearest(const QVector<QRgb> &colours, QRgb wanted)
{
    int best = 0;
    int least = std::numeric_limits<int>::max();
    for (int i = 0; i < colours.size(); ++i) {
        const int found = distance(colours.at(i), wanted);
        if (found >= least)
            continue;
        best = i;
        least = found;
    }
    return best;
}

// The frequent colours, and of the others those that look like none of them. Equally frequent ones
// come by value, so that a picture always comes out the same.
static QVector<QRgb> colourTable(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            ++counts[line[x]];
    }
    QVector<QRgb> colours;
    colours.reserve(counts.size());
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        colours.append(count.key());
    std::sort(colours.begin(), colours.end(), [&counts](QRgb a, QRgb b) {
        return std::make_pair(-counts.value(a), a) < std::make_pair(-counts.value(b), b);
    });

    QVector<QRgb> table;
    for (QRgb colour : qAsConst(colours)) {
        const bool isNew =
            table.isEmpty() || distance(table.at(nearest(table, colour)), colour) > leastDistance;
        if (isNew && table.size() < 256)
            table.append(colour);
    }
    return table;
}

QImage withFewColours(const QImage &image)
{
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    const QVector<QRgb> colours = colourTable(source);
    QImage made(source.size(), QImage::Format_Indexed8);
    made.setColorTable(colours);

    QHash<QRgb, int> places;
    for (int y = 0; y < source.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        uchar *to = made.scanLine(y);
        for (int x = 0; x < source.width(); ++x) {
            auto place = places.find(from[x]);
            if (place == places.end())
                place = places.insert(from[x], nearest(colours, from[x]));
            to[x] = uchar(*place);
        }
    }
    return made;
}

bool savePicture(const QImage &image, const QString &path)
{
    // The quality of a PNG file is how little it is compressed.
    return withFewColours(image).save(path, "PNG", 0);
}

} // namespace Workbench
