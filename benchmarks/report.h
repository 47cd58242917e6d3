// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>
#include <ostream>
#include <vector>

/// The values of one quantity, one from each round.
using Series = std::vector<double>;

double median(Series values);

/// A quantity that is compared with another one.
struct Comparison
{
    QString what;
    QString unit;
    Series measured;
    QString against;
    Series base;
    /// The limit for the ratio of the medians.
    std::optional<double> budget = {};
};

/// A quantity that has a limit of its own.
struct Quantity
{
    QString what;
    QString unit;
    Series measured;
    /// What the median may be at most, exclusively if `isExclusive`.
    std::optional<double> budget = {};
    bool isExclusive = false;
};

/// Collects the lines of the table and tells whether all budgets are kept.
class Report
{
public:
    void add(const Comparison& comparison);
    void add(const Quantity& quantity);

    void print(std::ostream& stream) const;
    bool isWithinBudgets() const { return m_isWithinBudgets; }

private:
    void addLine(
        const QString& what, const QString& measured, const QString& against, const QString& ratio,
        const QString& budget, std::optional<bool> isKept);

    QString m_lines;
    bool m_isWithinBudgets = true;
};
