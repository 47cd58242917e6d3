// SPDX-License-Identifier: BSD-3-Clause
#include "sqlbatch.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QString>

namespace {

/// Writes `number` in decimal digits, from `begin` to `end`.
void setDigits(QString* text, int begin, int end, int number)
{
    for (int i = end - 1; i >= begin; --i) {
        (*text)[i] = QLatin1Char(char('0' + number % 10));
        number /= 10;
    }
}

/// The same text for a time as the database driver writes, but for a local time several times as
/// fast. Any other time stays as it is.
QVariant timeToStore(const QDateTime& time)
{
    constexpr int lastYear = 9999;
    if (!time.isValid() || time.timeSpec() != Qt::LocalTime) {
        return time;
    }
    int year = 0;
    int month = 0;
    int day = 0;
    time.date().getDate(&year, &month, &day);
    if (year < 0 || year > lastYear) {
        return time;
    }
    QString text = QStringLiteral("0000-00-00T00:00:00.000");
    setDigits(&text, 0, 4, year);
    setDigits(&text, 5, 7, month);
    setDigits(&text, 8, 10, day);
    const QTime clock = time.time();
    setDigits(&text, 11, 13, clock.hour());
    setDigits(&text, 14, 16, clock.minute());
    setDigits(&text, 17, 19, clock.second());
    setDigits(&text, 20, 23, clock.msec());
    return text;
}

QVariant valueToStore(const QVariant& value)
{
    return value.userType() == QMetaType::QDateTime ? timeToStore(value.toDateTime()) : value;
}

} // namespace

void SqlBatch::append(std::initializer_list<QVariant> row)
{
    if (m_columns.isEmpty()) {
        m_columns.resize(int(row.size()));
    }
    Q_ASSERT(m_columns.size() == int(row.size()));
    auto column = m_columns.begin();
    for (const QVariant& value : row) {
        (column++)->append(valueToStore(value));
    }
}

bool SqlBatch::isEmpty() const
{
    return m_columns.isEmpty();
}

int SqlBatch::rowCount() const
{
    return isEmpty() ? 0 : m_columns.constFirst().size();
}

bool SqlBatch::exec(QSqlQuery& query) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        query.bindValue(i, QVariant(m_columns.at(i)));
    }
    if (!query.execBatch()) {
        return false;
    }
    query.finish();
    return true;
}
