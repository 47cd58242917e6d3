// SPDX-License-Identifier: BSD-3-Clause
#include "regularfile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Whether a file can have this path. The encoded form of any other text is the path of another
/// file: it ends at a NUL, and half of a surrogate pair is lost at the end of the path and becomes
/// a question mark elsewhere.
bool isPossiblePath(const QString& path)
{
    return !path.contains(QChar::Null) && path.isValidUtf16();
}

} // namespace

RegularFile::RegularFile(const QString& path)
{
    if (!isPossiblePath(path)) {
        return;
    }
    // The file is checked before it is opened: opening a FIFO would wake its writer, and opening a
    // device may have effects.
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    // Meanwhile, another file may have got this name. So opening does not block, and the file is
    // checked again.
    const int descriptor = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0) {
        return;
    }
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        static_cast<void>(close(descriptor)); // Nothing was written that could be lost.
        return;
    }
    m_descriptor = descriptor;
    m_size = status.st_size;
}

RegularFile::~RegularFile()
{
    if (isOpen()) {
        static_cast<void>(close(m_descriptor)); // Nothing was written that could be lost.
    }
}

std::optional<QByteArray> RegularFile::read(qint64 offset, int length) const
{
    QByteArray content(int(qBound<qint64>(0, m_size - offset, length)), Qt::Uninitialized);
    const qint64 count = read(offset, content.data(), content.size());
    if (count < 0) {
        return std::nullopt;
    }
    content.truncate(int(count));
    return content;
}

void RegularFile::fetch(qint64 offset, qint64 length) const
{
    if (offset < m_size) {
        // Only advice: where a file system takes none, all is read as it is without.
        static_cast<void>(posix_fadvise(m_descriptor, offset, length, POSIX_FADV_WILLNEED));
    }
}

void RegularFile::fetchNothingElse() const
{
    if (isOpen()) {
        static_cast<void>(
            posix_fadvise(m_descriptor, 0, 0, POSIX_FADV_RANDOM)); // Only advice, too.
    }
}

qint64 RegularFile::read(qint64 offset, char* data, qint64 length) const
{
    const qint64 wanted = qBound<qint64>(0, m_size - offset, length);
    qint64 count = 0;
    while (count < wanted) {
        const ssize_t piece =
            pread(m_descriptor, data + count, size_t(wanted - count), offset + count);
        if (piece == 0) {
            break;
        }
        if (piece > 0) {
            count += piece;
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return count;
}
