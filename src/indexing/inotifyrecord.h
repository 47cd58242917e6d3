// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QVector>

#include <cstdint>

/// One event from the kernel.
struct InotifyRecord
{
    /// The watch descriptor; -1 if the kernel has dropped events.
    int watch;
    /// IN_ flags.
    uint32_t mask;
    /// The name of the directory's entry that the event is about, as its bytes on the disk. Null
    /// for the directory itself.
    QByteArray name;
};

/// Reads all records that are waiting on an inotify descriptor, with one read and without blocking.
QVector<InotifyRecord> readInotifyRecords(int descriptor);
