// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "windowedfile.h"

#include <QByteArray>

#include <utility>

namespace {

/// Reads the numbers at the beginning of a file.
class NumberReader
{
public:
    explicit NumberReader(QByteArray text)
        : m_text(std::move(text))
    {
    }

    /// The next number of at most five digits; 0 for anything else.
    int next()
    {
        constexpr int maximumDigits = 5;
        skipBlanksAndComments();
        const int start = m_position;
        while (isDigit()) {
            ++m_position;
        }
        const QByteArray digits = m_text.mid(start, m_position - start);
        const bool isEnded = m_position < m_text.size() && isBlank();
        ++m_position;
        return isEnded && digits.size() <= maximumDigits ? digits.toInt() : 0;
    }

private:
    char current() const { return m_position < m_text.size() ? m_text.at(m_position) : '\0'; }
    bool isDigit() const { return current() >= '0' && current() <= '9'; }
    bool isBlank() const { return current() == ' ' || (current() >= '\t' && current() <= '\r'); }

    void skipBlanksAndComments()
    {
        while (isBlank() || current() == '#') {
            if (current() == '#') {
                const int end = m_text.indexOf('\n', m_position);
                m_position = end >= 0 ? end : m_text.size();
            }
            ++m_position;
        }
    }

    const QByteArray m_text;
    int m_position = 0;
};

} // namespace

std::optional<QSize> pnmSize(WindowedFile& file)
{
    constexpr int maximumHeader = 1024; // including comments
    constexpr int kindSize = 3;
    constexpr int largestSide = 32767; // the limit of the decoder
    constexpr int maximumValue = 65535;
    const QByteArray start = file.read(0, maximumHeader);
    const char kind = start.size() > kindSize ? start.at(1) : '\0';
    NumberReader numbers(start.mid(kindSize));
    const int width = numbers.next();
    const int height = numbers.next();
    const bool isBitmap = kind == '1' || kind == '4';
    const int largestValue = isBitmap ? 1 : numbers.next();
    const bool hasSides = qMin(width, height) > 0 && qMax(width, height) <= largestSide;
    if (!hasSides || largestValue <= 0 || largestValue > maximumValue) {
        return {};
    }
    return QSize(width, height);
}
