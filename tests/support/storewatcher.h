// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

/// Follows the key/value store as any process can: records each announcement of its service from
/// the construction on. The event loop has to run. If the service announces nothing, the current
/// test fails.
///
/// Changes that reach the service while it is busy are announced together. Writing the value that a
/// key already has is not a change.
class StoreWatcher : public QObject
{
    Q_OBJECT

public:
    StoreWatcher();

    /// The keys of each announcement so far, in the order of the announcements.
    QList<QStringList> announcements() const { return m_announcements; }
    /// The index of the announcement that contains a key, or -1.
    int announcementOf(const QString& key) const;

    /// Waits until all changes that have reached the service are announced. Returns false if this
    /// takes too long.
    Q_REQUIRED_RESULT bool catchUp();

private Q_SLOTS:
    void note(const QString& prefix, const QStringList& names, const QString& tag);

private:
    QList<QStringList> m_announcements;
    int m_fences = 0;
};
