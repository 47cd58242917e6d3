// SPDX-License-Identifier: BSD-3-Clause
#include "windowedfile.h"

namespace {

// Most pictures have their tags in the first one or two pages.
constexpr int PageSize = 4096;

// Reading the tags of a picture takes about 30 reads. Only a PNG file with its tags after the
// pixels needs many. Pixels are in chunks of 8 KiB and more, so this limit suffices for 160 MB of
// them, in about 10 ms.
constexpr int MaximumReads = 20000;

// The tags, and the size of a picture without a thumbnail, are in the first two pages. A thumbnail
// often fills several further pages, which are not read.
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
    // Only whole pages are read, because the kernel reads whole pages, and they may have been
    // requested before.
    const int lead = int(offset % PageSize);
    const int pages = (lead + length + PageSize - 1) / PageSize;
    m_window.reserve(PageSize);
    m_window.resize(pages * PageSize);
    m_windowOffset = offset - lead;
    const qint64 count = m_file->read(m_windowOffset, m_window.data(), m_window.size());
    m_window.truncate(int(qMax<qint64>(count, 0)));
}
