// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QJsonObject>
#include <QMap>
#include <QString>

/// What the state file holds of one adapter.
struct AdapterState
{
    AdapterRecord record;
    bool isUnfinished = false; ///< what the record tells as set was to be set, and may not be
    QString setting; ///< "auto", "on" or "off"
    bool isPresent = false;
    QString time; ///< of the last success, as ISO 8601 in UTC; empty if there was none
    QString failure; ///< of the last attempt, in one sentence
};

/// The state file, by which the user's own settings come back and which the status is read from.
///
/// It is written whole, so that a process that is killed leaves the old or the new one.
class StateRecord
{
public:
    /// Reads the file, and changes nothing. One that cannot be understood counts as empty; the
    /// first store() sets it aside under another name, with one warning.
    explicit StateRecord(const QString& path);

    /// Writes the file if anything has changed. Returns what went wrong, or an empty text.
    QString store();

    QMap<QString, AdapterState> adapters; ///< by name
    /// The source of the picture copy that was handed out last, its stamp, and the copy.
    QJsonObject picture;

private:
    void read(const QByteArray& content);
    void setAside() const;
    QByteArray content() const;

    const QString m_path;
    QByteArray m_stored;
    bool m_isDamaged = false;
};
