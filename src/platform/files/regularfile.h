// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A regular file that is open for reading.
///
/// Opening never blocks and has no other effects: a FIFO, a device or a directory is not opened,
/// even through a symbolic link. All reads are from the file that was opened, even if another file
/// gets its name later.
class RegularFile
{
public:
    /// Opens the file at the local path `path`. isOpen() tells whether this succeeded.
    explicit RegularFile(const QString& path);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    bool isOpen() const { return m_descriptor >= 0; }

    /// The size in bytes when the file was opened, or 0 if it is not open.
    qint64 size() const { return m_size; }

    /// The `length` bytes at `offset`, or fewer if the file ends earlier or ended earlier when it
    /// was opened. Empty on an error.
    std::optional<QByteArray> read(qint64 offset, int length) const;

    /// Has the system fetch `length` bytes at `offset` from the disk, without waiting for them.
    void fetch(qint64 offset, qint64 length) const;
    /// From now on the system fetches nothing that is not asked for.
    void fetchNothingElse() const;

    /// Reads the `length` bytes at `offset` into `data`. Returns their number, which is smaller if
    /// the file ends earlier, or -1 on an error.
    qint64 read(qint64 offset, char* data, qint64 length) const;

private:
    int m_descriptor = -1;
    qint64 m_size = 0;
};
