// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

/// Reads small pieces of a regular file by position.
///
/// Opening never waits: what is no regular file (a FIFO, a device, a directory) is not opened. The
/// number of reads is limited, so that a walk through the parts of a hostile file ends soon: behind
/// the limit the file reads as if it had ended.
class RegularFile
{
public:
    /// Opens the file at the local path `path`; a file that cannot be opened has the size 0.
    explicit RegularFile(const QString& path);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    /// The size in bytes at the time of opening.
    [[nodiscard]] qint64 size() const { return m_size; }

    /// The `length` bytes at `offset`, fewer where the file ends before, none on an error.
    QByteArray read(qint64 offset, int length);

private:
    void fill(qint64 offset, int length);

    int m_descriptor = -1;
    qint64 m_size = 0;
    int m_reads = 0;
    qint64 m_windowOffset = 0;
    QByteArray m_window;
};
