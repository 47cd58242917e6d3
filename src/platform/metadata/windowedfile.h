// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "regularfile.h"

#include <QByteArray>

#include <memory>

/// Reads small pieces of a regular file by position.
///
/// Small pieces that lie close together cost one read. The number of reads is limited, so that a
/// walk through the parts of a hostile file ends soon: after the limit the file reads as if it had
/// ended.
class WindowedFile
{
public:
    /// Opens the file at the local path `path`; a file that cannot be opened has the size 0.
    explicit WindowedFile(const QString& path);

    /// Whether there is such a file and it may be read.
    bool isOpen() const { return m_file->isOpen(); }
    /// The size in bytes at the time of opening.
    qint64 size() const { return m_file->size(); }
    /// The open file, for others that read it.
    std::shared_ptr<const RegularFile> file() const { return m_file; }

    /// Has the system fetch from the disk what headers take, and nothing else. Some time later they
    /// can be read without waiting.
    void fetchHeader() const;
    /// Has the system fetch some bytes that are to be read later, without waiting for them.
    void fetch(qint64 offset, int length) const { m_file->fetch(offset, length); }

    /// The `length` bytes at `offset`, fewer where the file ends before, none on an error.
    QByteArray read(qint64 offset, int length);

private:
    void fill(qint64 offset, int length);

    const std::shared_ptr<const RegularFile> m_file;
    int m_reads = 0;
    qint64 m_windowOffset = 0;
    QByteArray m_window;
};
