// SPDX-License-Identifier: BSD-3-Clause
#include "windowedfile.h"

namespace {

// Most pictures show their tags in the first one or two.
constexpr int PageSize = 4096;

// A picture's tags take some 30 reads. What needs many is a PNG file with its tags after the
// pixels, which stand in chunks of 8 KiB and more: this reaches through 160 MB of them in some 10
// ms.
constexpr int MaximumReads = 20000;

// Tags, and the sizes of pictures without a thumbnail, stand in the first two pages. A thumbnail
// often fills several more, of which none is read.
constexpr qint64 HeaderSize = qint64(8) * 1024;

} // namespace

WindowedFile::WindowedFile(const QString& path)
    : m_file(std::make_shared<RegularFile>(path))
{
}

void WindowedFile::fetchHeader() const
{
    m_file->fetchNothingElse();
    m_file->fetch(0, HeaderSize);
}

QByteArray WindowedFile::read(qint64 offset, int length)
{
    if (offset < 0 || offset >= size() || length <= 0 || m_reads == MaximumReads) {
        return {};
    }
    ++m_reads;
    length = int(qMin<qint64>(length, size() - offset));
    const bool buffered =
        offset >= m_windowOffset && offset + length <= m_windowOffset + m_window.size();
    if (!buffered) {
        fill(offset, length);
    }
    return m_window.mid(int(offset - m_windowOffset), length);
}

void WindowedFile::fill(qint64 offset, int length)
{
    // Whole pages: the system reads no others, and these may have been fetched.
    const int lead = int(offset % PageSize);
    const int pages = (lead + length + PageSize - 1) / PageSize;
    m_window.reserve(PageSize);
    m_window.resize(pages * PageSize);
    m_windowOffset = offset - lead;
    const qint64 count = m_file->read(m_windowOffset, m_window.data(), m_window.size());
    m_window.truncate(int(qMax<qint64>(count, 0)));
}
