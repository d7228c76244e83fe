// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "results.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

// How far a result is from its target. One that can't be told counts as furthest.
static double distance(const CaseResult &result)
{
    const double share = result.ratio / result.target;
    return qIsNaN(share) ? qInf() : share;
}

void addResult(QVector<CaseResult> *results, const CaseResult &result)
{
    const auto known = std::find_if(results->begin(), results->end(), [&](const CaseResult &other) {
        return other.name == result.name;
    });
    if (known == results->end())
        results->append(result);
    else if (distance(result) > distance(*known))
        *known = result;
}

QVector<CaseResult> readResults(const QString &path, bool *ok)
{
    QFile file(path);
    *ok = !file.exists();
    if (*ok || !file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    *ok = document.isObject();
    QVector<CaseResult> results;
    const QJsonArray cases = document.object().value(QLatin1String("benchmarks")).toArray();
    for (const QJsonValue &each : cases) {
        CaseResult result;
        result.name = each[QLatin1String("name")].toString();
        result.ratio = each[QLatin1String("ratio")].toDouble(qQNaN());
        result.target = each[QLatin1String("target")].toDouble();
        result.value = each[QLatin1String("value")].toDouble();
        result.bound = each[QLatin1String("bound")].toDouble();
        result.unit = each[QLatin1String("unit")].toString();
        result.size = each[QLatin1String("size")].toInt();
        results.append(result);
    }
    return results;
}

bool writeResults(const QString &path, const QVector<CaseResult> &results)
{
    QJsonArray cases;
    for (const CaseResult &result : results) {
        cases.append(QJsonObject{{"name", result.name},
                                 {"ratio", result.ratio},
                                 {"target", result.target},
                                 {"value", result.value},
                                 {"bound", result.bound},
                                 {"unit", result.unit},
                                 {"size", result.size}});
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(QJsonObject{{"benchmarks", cases}}).toJson());
    return file.commit();
}

static QString tableLine(const QString &name, const QString &size, const QString &value,
                         const QString &bound, const QString &unit, const QString &ratio,
                         const QString &target, const QString &verdict)
{
    return QString("%1 %2 %3 %4 %5 %6 %7  %8\n")
        .arg(name, -24)
        .arg(size, 8)
        .arg(value, 10)
        .arg(bound, 10)
        .arg(unit, -13)
        .arg(ratio, 8)
        .arg(target, 8)
        .arg(verdict);
}

static QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString tableOf(const QVector<CaseResult> &results)
{
    QString table = tableLine("case", "size", "value", "bound", "unit", "ratio", "target", "");
    int missed = 0;
    for (const CaseResult &result : results) {
        table +=
            tableLine(result.name, QString::number(result.size), number(result.value, 2),
                      number(result.bound, 2), result.unit, number(result.ratio, 3),
                      number(result.target, 2), QLatin1String(result.passed() ? "met" : "MISSED"));
        missed += result.passed() ? 0 : 1;
    }
    return table
        + QString("%1 of %2 targets met\n").arg(results.size() - missed).arg(results.size());
}
