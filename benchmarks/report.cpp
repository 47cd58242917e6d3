// SPDX-License-Identifier: BSD-3-Clause
#include "report.h"

#include <algorithm>

namespace {

/// Three digits are more than the measurements are good for.
QString text(double value, const QString& unit = {})
{
    const int decimals = value < 0.1 ? 4 : value < 10 ? 2 : value < 100 ? 1 : 0;
    const QString number = value == 0 ? QStringLiteral("0") : QString::number(value, 'f', decimals);
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

QString range(const Comparison& comparison)
{
    Series ratios;
    const size_t count = std::min(comparison.measured.size(), comparison.base.size());
    for (size_t i = 0; i < count; ++i) {
        ratios.push_back(comparison.measured.at(i) / comparison.base.at(i));
    }
    const auto [least, most] = std::minmax_element(ratios.begin(), ratios.end());
    return QStringLiteral(" (%1 to %2)").arg(text(*least), text(*most));
}

} // namespace

double median(Series values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values.at(middle)
                                  : (values.at(middle - 1) + values.at(middle)) / 2;
}

void Report::add(const Comparison& comparison)
{
    const double measured = median(comparison.measured);
    const double base = median(comparison.base);
    const double ratio = measured / base;
    const std::optional<double>& budget = comparison.budget;
    addLine(
        comparison.what, text(measured, comparison.unit),
        comparison.against + QStringLiteral(": ") + text(base, comparison.unit),
        text(ratio) + range(comparison), budget ? text(*budget) : QString(),
        budget ? std::optional(ratio <= *budget) : std::nullopt);
}

void Report::add(const Quantity& quantity)
{
    const double measured = median(quantity.measured);
    const std::optional<double>& budget = quantity.budget;
    const QString limit = budget ? (quantity.isExclusive ? QStringLiteral("under ") : QString())
            + text(*budget, quantity.unit)
                                 : QString();
    addLine(
        quantity.what, text(measured, quantity.unit), QString(), QString(), limit,
        budget ? std::optional(quantity.isExclusive ? measured < *budget : measured <= *budget)
               : std::nullopt);
}

void Report::print(std::ostream& stream) const
{
    stream << "| What | Measured | Against | Ratio (of single rounds) | At most | Kept |\n"
           << "|---|---|---|---|---|---|\n"
           << m_lines.toStdString();
}

void Report::addLine(
    const QString& what, const QString& measured, const QString& against, const QString& ratio,
    const QString& budget, std::optional<bool> isKept)
{
    m_isWithinBudgets = m_isWithinBudgets && isKept.value_or(true);
    const QString verdict =
        !isKept ? QString() : (*isKept ? QStringLiteral("yes") : QStringLiteral("**no**"));
    m_lines += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n")
                   .arg(what, measured, against, ratio, budget, verdict);
}
