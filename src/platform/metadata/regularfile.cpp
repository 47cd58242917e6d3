// SPDX-License-Identifier: BSD-3-Clause
#include "regularfile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One page: most pictures show their tags in the first one or two.
constexpr int kWindowSize = 4096;

// A picture's tags take some 30 reads. What needs many is a PNG file with its tags behind the
// pixels, which stand in chunks of 8 KiB and more: this reaches through 160 MB of them in some 10
// ms.
constexpr int kMaximumReads = 20000;

qint64 regularSize(const struct stat& status)
{
    return S_ISREG(status.st_mode) ? status.st_size : -1;
}

} // namespace

RegularFile::RegularFile(const QString& path)
{
    // Looked at before it is opened: opening a FIFO would wake its writer, and a device may act.
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0 || regularSize(status) < 0) {
        return;
    }
    // Another file may have taken the name meanwhile, so opening does not wait, and it is looked at
    // again.
    m_descriptor = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (m_descriptor >= 0 && fstat(m_descriptor, &status) == 0) {
        m_size = qMax<qint64>(0, regularSize(status));
    }
}

RegularFile::~RegularFile()
{
    if (m_descriptor >= 0) {
        (void)close(m_descriptor); // Nothing was written that could be lost.
    }
}

QByteArray RegularFile::read(qint64 offset, int length)
{
    if (offset < 0 || offset >= m_size || length <= 0 || m_reads == kMaximumReads) {
        return {};
    }
    ++m_reads;
    length = static_cast<int>(qMin<qint64>(length, m_size - offset));
    const bool buffered =
        offset >= m_windowOffset && offset + length <= m_windowOffset + m_window.size();
    if (!buffered) {
        fill(offset, length);
    }
    return m_window.mid(static_cast<int>(offset - m_windowOffset), length);
}

void RegularFile::fill(qint64 offset, int length)
{
    m_windowOffset = offset;
    m_window.clear();
    QByteArray window(qMax(length, kWindowSize), Qt::Uninitialized);
    ssize_t count = 0;
    do {
        count = pread(m_descriptor, window.data(), static_cast<size_t>(window.size()), offset);
    } while (count < 0 && errno == EINTR);
    if (count > 0) {
        window.truncate(static_cast<int>(count));
        m_window = window;
    }
}
