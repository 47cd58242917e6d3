// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

/// Follows whether at least one of some names is on the session bus. It never waits, and starts no
/// service.
class BusPresence : public QObject
{
    Q_OBJECT
public:
    explicit BusPresence(const QStringList& names, QObject* parent = nullptr);

    /// Starts to follow.
    void follow();
    bool isPresent() const { return !m_present.isEmpty(); }

Q_SIGNALS:
    /// A name has appeared on the bus or left it, or has a new owner.
    void changed();

private:
    void handleOwner(const QString& name, const QString& owner);

    const QStringList m_names;
    QDBusServiceWatcher m_watcher;
    QSet<QString> m_present;
};
