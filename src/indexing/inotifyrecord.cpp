// SPDX-License-Identifier: BSD-3-Clause
#include "inotifyrecord.h"

#include <QVarLengthArray>

#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstring>

namespace {

/// This is enough for a few dozen records, so most reads allocate no memory.
constexpr int StackBufferSize = 4096;

} // namespace

QVector<InotifyRecord> readInotifyRecords(int descriptor)
{
    int waiting = 0;
    ioctl(descriptor, FIONREAD, &waiting);
    if (waiting <= 0) {
        // The queue is empty: a read would block.
        return {};
    }
    QVarLengthArray<char, StackBufferSize> buffer(waiting);
    const ssize_t length = read(descriptor, buffer.data(), size_t(waiting));

    QVector<InotifyRecord> records;
    ssize_t position = 0;
    while (position + ssize_t(sizeof(inotify_event)) <= length) {
        inotify_event event;
        std::memcpy(&event, buffer.constData() + position, sizeof event);
        const char* const name = buffer.constData() + position + sizeof event;
        records.append(
            {event.wd, event.mask,
             event.len == 0 ? QByteArray() : QByteArray(name, int(qstrnlen(name, event.len)))});
        position += ssize_t(sizeof event + event.len);
    }
    return records;
}
