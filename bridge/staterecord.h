// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QJsonObject>
#include <QMap>
#include <QString>

/// The part of the state file for one adapter.
struct AdapterState
{
    AdapterRecord record;
    QString setting; ///< "auto", "on" or "off"
    bool isPresent = false;
    QString time; ///< the time of the last success, as ISO 8601 in UTC, or an empty text
    QString failure; ///< why the last attempt failed, in one sentence
};

/// The state file. The user's settings are restored from it, and the status is read from it.
///
/// It is replaced as a whole, so that a process that is killed leaves the old or the new file.
class StateRecord
{
public:
    /// Reads the file without changing it. A damaged file counts as empty, and the first store()
    /// renames it and logs one warning.
    explicit StateRecord(const QString& path);

    /// Writes the file if anything has changed. Returns what went wrong, or an empty text.
    QString store();

    QMap<QString, AdapterState> adapters; ///< by name
    /// The source of the last copy of a wallpaper, the state of that file, and the copy.
    QJsonObject picture;

private:
    void read(const QByteArray& content);
    void setAside() const;
    QByteArray content() const;

    const QString m_path;
    QByteArray m_stored;
    bool m_isDamaged = false;
};
