// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVector>

/// What came of one case.
struct CaseResult
{
    QString name;
    double ratio = 0; ///< Of what was measured to its bound.
    double target = 0;
    double value = 0;
    double bound = 0;
    QString unit; ///< Of value and bound.
    int size = 0; ///< Number of labels, names, rows ... that the case works on.

    /// Whether the ratio is the target or less. A ratio that is no number isn't.
    bool passed() const { return ratio <= target; }
};

/// Adds \a result to \a results. A case that is measured in several ways, as with several patterns
/// or trees, is as good as the worst of them, so that of two results of one name only the one
/// further from its target stays.
void addResult(QVector<CaseResult> *results, const CaseResult &result);

/// Reads results from a file of writeResults().
///
/// \param ok set to whether the file was read; a file that isn't there counts as one without
///        results.
QVector<CaseResult> readResults(const QString &path, bool *ok);

/// Writes `{"benchmarks": [{"name", "ratio", "target", "value", "bound", "unit", "size"}]}`.
/// \return whether all was written.
bool writeResults(const QString &path, const QVector<CaseResult> &results);

/// A table of the results, a line each, with whether the target was met.
QString tableOf(const QVector<CaseResult> &results);
