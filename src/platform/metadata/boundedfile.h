// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "regularfile.h"

#include <QIODevice>

#include <memory>

/// A regular file from which only a limited number of bytes can be read, at any position. When they
/// are used up, the file behaves as if it ended at the reader's position. So a decoder that
/// searches a file of gigabytes, or reads the same bytes again and again, comes to an end.
///
/// The device is open for reading from the start. Opening does not block; if the file is not a
/// regular file, the device is not open.
class BoundedFile : public QIODevice
{
    Q_OBJECT

public:
    /// Opens the file at the local path `path`. No bytes can be read yet.
    explicit BoundedFile(const QString& path);
    /// Reads a file that is open already.
    explicit BoundedFile(std::shared_ptr<const RegularFile> file);

    /// Allows `limit` further bytes to be read.
    void allow(qint64 limit) { m_bytesLeft = limit; }

    qint64 size() const override;
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 length) override;
    qint64 writeData(const char* data, qint64 length) override;

private:
    const std::shared_ptr<const RegularFile> m_file;
    qint64 m_bytesLeft = 0;
    qint64 m_position = 0;
};
