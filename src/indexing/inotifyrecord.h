// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVector>

#include <cstdint>

/// One event as the kernel told it.
struct InotifyRecord
{
    /// The watch descriptor; -1 if the kernel has dropped events.
    int watch;
    /// IN_ flags.
    uint32_t mask;
    /// The name of the directory's entry that the event is about; null for the directory itself.
    QString name;
};

/// Reads all records that wait on an inotify descriptor, in one go and without waiting for any.
QVector<InotifyRecord> readInotifyRecords(int descriptor);
