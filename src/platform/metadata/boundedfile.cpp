// SPDX-License-Identifier: BSD-3-Clause
#include "boundedfile.h"

#include <utility>

BoundedFile::BoundedFile(const QString& path)
    : BoundedFile(std::make_shared<RegularFile>(path))
{
}

BoundedFile::BoundedFile(std::shared_ptr<const RegularFile> file)
    : m_file(std::move(file))
{
    if (m_file->isOpen()) {
        QIODevice::open(QIODevice::ReadOnly);
    }
}

qint64 BoundedFile::size() const
{
    // Readers that read up to the end find it here.
    return m_bytesLeft > 0 ? m_file->size() : qMin(m_position, m_file->size());
}

bool BoundedFile::seek(qint64 position)
{
    if (!QIODevice::seek(position)) {
        return false;
    }
    m_position = position;
    return true;
}

qint64 BoundedFile::readData(char* data, qint64 length)
{
    const qint64 count = m_file->read(m_position, data, qMin(length, m_bytesLeft));
    if (count > 0) {
        m_position += count;
        m_bytesLeft -= count;
    }
    return count;
}

qint64 BoundedFile::writeData(const char* /*data*/, qint64 /*length*/)
{
    return -1;
}
