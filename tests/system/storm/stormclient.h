// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "stormcalls.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

/// A client on a connection of its own, which waits for none of its replies.
class StormClient : public QObject
{
    Q_OBJECT

public:
    explicit StormClient(int number);
    ~StormClient() override;

    void send(const StormCall& call);
    /// The store client's news of an installed package.
    void announceInstalled(const QString& package, const QString& coverId);

    int openCalls() const { return m_openCalls; }
    int calls() const { return m_calls; }
    /// What was wrong with a reply; empty if nothing was.
    QString fault() const { return m_fault; }

private:
    void take(const StormCall& call, QDBusPendingCallWatcher* reply);

    const QString m_name;
    QDBusConnection m_bus;
    int m_openCalls = 0;
    int m_calls = 0;
    QString m_fault;
};
