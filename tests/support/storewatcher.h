// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

/// Follows the key/value store as any process can: notes what its service announces, change by
/// change, from the object's making on. The event loop has to turn. A service that announces
/// nothing fails the current test.
///
/// Changes that reach the service while it is at work are one to it, and announced in one. A write
/// of the value that a key has is no change.
class StoreWatcher : public QObject
{
    Q_OBJECT

public:
    StoreWatcher();

    /// The keys of each announcement so far, oldest first.
    [[nodiscard]] QList<QStringList> announcements() const { return m_announcements; }
    /// Which of them has a key; -1 if none has.
    [[nodiscard]] int announcementOf(const QString& key) const;

    /// Waits until all changes that have reached the service are announced. Returns false if that
    /// takes too long.
    Q_REQUIRED_RESULT bool catchUp();

private Q_SLOTS:
    void note(const QString& prefix, const QStringList& names, const QString& tag);

private:
    QList<QStringList> m_announcements;
    int m_fences = 0;
};
