// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "regularfile.h"

#include <QByteArray>

#include <memory>

/// Reads small pieces of a regular file by position.
///
/// Small pieces that are close together cost one read. The number of reads is limited, so that
/// reading the parts of a hostile file ends soon: after the limit, the file behaves as if it had
/// ended.
class WindowedFile
{
public:
    /// Opens the file at the local path `path`. A file that cannot be opened has the size 0.
    explicit WindowedFile(const QString& path);

    /// Whether the file exists and may be read.
    bool isOpen() const { return m_file->isOpen(); }
    /// The size in bytes at the time of opening.
    qint64 size() const { return m_file->size(); }
    /// The open file, for other readers.
    std::shared_ptr<const RegularFile> file() const { return m_file; }

    /// Requests the part of the file from the disk that usually has the headers, and nothing else.
    /// Some time later, it can be read without waiting.
    void fetchHeader() const;
    /// Requests some bytes from the disk that will be read later, without waiting for them.
    void fetch(qint64 offset, int length) const { m_file->fetch(offset, length); }

    /// The `length` bytes at `offset`, or fewer if the file ends earlier, and none on an error.
    QByteArray read(qint64 offset, int length);

private:
    void fill(qint64 offset, int length);

    const std::shared_ptr<const RegularFile> m_file;
    int m_reads = 0;
    qint64 m_windowOffset = 0;
    QByteArray m_window;
};
