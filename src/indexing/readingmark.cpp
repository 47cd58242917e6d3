// SPDX-License-Identifier: BSD-3-Clause
#include "readingmark.h"

#include <QByteArray>
#include <QFileInfo>
#include <QHash>

#include <cstring>

namespace {

/// One process may have been ended from outside.
constexpr quint64 DeadlyEnds = 2;

} // namespace

QString ReadingMark::userFile()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/moodsetd.reading");
}

ReadingMark::ReadingMark(const QString& path)
    : m_file(path)
{
    constexpr int size = sizeof(Record);
    const QFileInfo file(path);
    // Reading a FIFO would wait for ever.
    if (path.isEmpty() || (file.exists() && !file.isFile())
        || !m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        return;
    }
    QByteArray content = m_file.read(size);
    if (content.size() != size) {
        content = QByteArray(size, '\0');
        // This takes the room that the mapped file needs.
        if (!m_file.seek(0) || m_file.write(content) != size) {
            return;
        }
    }
    m_content = m_file.map(0, size);
    std::memcpy(&m_suspect, content.constData(), size);
    if (m_suspect.picture != 0) {
        ++m_suspect.ends;
    }
    // The mapping stays.
    m_file.close();
}

ReadingMark::~ReadingMark() = default;

bool ReadingMark::isDeadly(const QString& picture) const
{
    return m_suspect.ends >= DeadlyEnds && m_suspect.picture == keyOf(picture);
}

void ReadingMark::set(const QString& picture)
{
    const quint64 key = keyOf(picture);
    write({key, m_suspect.picture == key ? m_suspect.ends : 0});
}

void ReadingMark::clear()
{
    write({});
}

void ReadingMark::forget()
{
    m_suspect = {};
}

/// Ids of files begin anew with a new database, so they do not serve.
quint64 ReadingMark::keyOf(const QString& picture)
{
    constexpr quint64 notNothing = quint64(1) << 32;
    return notNothing | qHash(picture, 0);
}

void ReadingMark::write(const Record& record)
{
    if (m_content) {
        std::memcpy(m_content, &record, sizeof(record));
    }
}
