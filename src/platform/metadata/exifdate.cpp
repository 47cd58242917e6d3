// SPDX-License-Identifier: BSD-3-Clause
#include "exifdate.h"

#include <optional>

namespace {

constexpr int SecondsPerMinute = 60;
constexpr int SecondsPerHour = 3600;
// The time zones of the world are from -12 to +14 hours.
constexpr int MaximumOffset = 14 * SecondsPerHour;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads the parts of a text, one after the other.
class Scanner
{
public:
    explicit Scanner(const QByteArray& text)
        : m_text(text.left(int(qstrnlen(text.constData(), uint(text.size())))).trimmed())
    {
    }

    bool atEnd() const { return m_position >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text.at(m_position); }

    bool skip(char c)
    {
        if (peek() != c || atEnd()) {
            return false;
        }
        ++m_position;
        return true;
    }

    void skipBlanks()
    {
        while (skip(' ')) { }
    }

    bool skipAnyOf(const char* characters)
    {
        const char c = peek();
        return c != '\0'
            && QByteArray::fromRawData(characters, int(qstrlen(characters))).contains(c) && skip(c);
    }

    QByteArray digits()
    {
        const int start = m_position;
        while (isDigit(peek())) {
            ++m_position;
        }
        return m_text.mid(start, m_position - start);
    }

    /// A number of one or two digits, which may follow a blank; -1 if there is none.
    int shortNumber()
    {
        skip(' ');
        const QByteArray number = digits();
        return number.isEmpty() || number.size() > 2 ? -1 : number.toInt();
    }

private:
    const QByteArray m_text;
    int m_position = 0;
};

std::optional<QDate> scanDate(Scanner& scanner)
{
    const QByteArray year = scanner.digits();
    if (year.size() != 4 || !scanner.skipAnyOf(":-/.")) {
        return {};
    }
    const int month = scanner.shortNumber();
    if (!scanner.skipAnyOf(":-/.")) {
        return {};
    }
    const QDate date(year.toInt(), month, scanner.shortNumber());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

/// Converts the digits after the seconds to milliseconds.
std::optional<int> milliseconds(const QByteArray& fraction)
{
    Scanner scanner(fraction);
    const QByteArray digits = scanner.digits();
    if (digits.isEmpty() || !scanner.atEnd()) {
        return {};
    }
    return digits.leftJustified(3, '0', true).toInt();
}

struct TimeOfDay
{
    QTime time;
    bool hasFraction = false;
};

std::optional<TimeOfDay> scanTime(Scanner& scanner)
{
    const int hour = scanner.shortNumber();
    if (!scanner.skip(':')) {
        return {};
    }
    const int minute = scanner.shortNumber();
    const int second = scanner.skip(':') ? scanner.shortNumber() : 0;
    const bool hasFraction = scanner.skipAnyOf(".,");
    const auto fraction = hasFraction ? milliseconds(scanner.digits()) : std::optional(0);
    const QTime time(hour, minute, second, fraction.value_or(0));
    if (!fraction || !time.isValid()) {
        return {};
    }
    return TimeOfDay{time, hasFraction};
}

/// An offset from UTC in seconds.
std::optional<int> scanOffset(Scanner& scanner)
{
    if (scanner.skipAnyOf("Zz")) {
        return scanner.atEnd() ? std::optional(0) : std::nullopt;
    }
    const int sign = scanner.peek() == '-' ? -1 : 1;
    if (!scanner.skipAnyOf("+-")) {
        return {};
    }
    QByteArray hours = scanner.digits();
    QByteArray minutes = "0";
    if (scanner.skip(':')) {
        minutes = scanner.digits();
    } else if (hours.size() == 4) {
        minutes = hours.mid(2);
        hours.truncate(2);
    }
    const bool wellFormed = !hours.isEmpty() && hours.size() <= 2 && !minutes.isEmpty()
        && minutes.size() <= 2 && minutes.toInt() < 60 && scanner.atEnd();
    const int offset = hours.toInt() * SecondsPerHour + minutes.toInt() * SecondsPerMinute;
    return wellFormed && offset <= MaximumOffset ? std::optional(sign * offset) : std::nullopt;
}

std::optional<int> utcOffset(const QByteArray& text)
{
    Scanner scanner(text);
    return scanOffset(scanner);
}

QDateTime localDateTime(const QDate& date, const QTime& time)
{
    const QDateTime local(date, time);
    return local.isValid() ? local : date.startOfDay().addMSecs(time.msecsSinceStartOfDay());
}

/// Whether only blanks follow, and colons between them. Cameras write these for an unknown time.
bool isBlankTime(Scanner scanner)
{
    while (scanner.skipAnyOf(" :")) { }
    return scanner.atEnd();
}

} // namespace

QDateTime exifDate(const QByteArray& date, const QByteArray& subSeconds, const QByteArray& offset)
{
    Scanner scanner(date);
    const std::optional<QDate> day = scanDate(scanner);
    if (!day) {
        return {};
    }
    if (isBlankTime(scanner)) {
        return day->startOfDay();
    }
    if (!scanner.skipAnyOf(" Tt")) {
        return {};
    }
    scanner.skipBlanks();
    std::optional<TimeOfDay> timeOfDay = scanTime(scanner);
    if (!timeOfDay) {
        return {};
    }
    if (!timeOfDay->hasFraction) {
        timeOfDay->time = timeOfDay->time.addMSecs(milliseconds(subSeconds).value_or(0));
    }
    scanner.skipBlanks();
    const bool hasOffset = !scanner.atEnd();
    const std::optional<int> seconds = hasOffset ? scanOffset(scanner) : utcOffset(offset);
    if (hasOffset && !seconds) {
        return {};
    }
    return seconds ? QDateTime(*day, timeOfDay->time, Qt::OffsetFromUTC, *seconds)
                   : localDateTime(*day, timeOfDay->time);
}
