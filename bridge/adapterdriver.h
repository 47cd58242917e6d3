// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "bridgeconfiguration.h"
#include "staterecord.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

/// Takes one adapter through its steps: save, apply, verify.
///
/// It runs while the shell is there and something is to be set that is not set yet. What comes
/// while it runs waits for the end, and only the newest counts. A step that does not end in time is
/// given up, so that one shell never keeps the others waiting. Main thread only.
class AdapterDriver : public QObject
{
    Q_OBJECT
public:
    /// `state` must outlive the driver.
    AdapterDriver(
        std::unique_ptr<Adapter> adapter, AdapterSetting setting, StateRecord* state,
        QObject* parent = nullptr);

    /// Starts to follow the shell, unless the adapter is switched off.
    void start();
    /// Has the newest look or sound applied.
    void hand(const Appearance& appearance);

    Adapter::Subject subject() const { return m_adapter->subject(); }
    bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    /// The state has changed, and is to be stored soon.
    void stateChanged();
    /// A run has ended.
    void rested();

private:
    void handlePresence();
    void handleForgotten();
    void handleDoubt();
    void startRunIfNeeded();
    bool isPlanSet(const QJsonObject& plan) const;
    void run(const QJsonObject& plan);
    void apply(const QJsonObject& saved);
    void verify();
    void conclude();
    /// Ends a run that is of no use any more, without a word.
    void interrupt();
    void giveUp(const QString& reason);
    void retryLater();
    /// Ends a run. After a failure, the next look tries again, and a shell that comes back.
    void finish(const QString& failure);
    Adapter::Done then(void (AdapterDriver::*next)());
    AdapterState& state() { return m_state->adapters[m_adapter->name()]; }

    const std::unique_ptr<Adapter> m_adapter;
    const AdapterSetting m_setting;
    StateRecord* const m_state;
    std::optional<Appearance> m_appearance;
    QJsonObject m_plan;
    QTimer m_limit;
    QTimer m_retry;
    QTimer m_settling;
    int m_retriesLeft = 0;
    quint64 m_step =
        0; ///< tells the answer of a step that was given up from that of the present one
    bool m_isRunning = false;
    bool m_isVerifying = false;
    bool m_isStale = false; ///< something has come while it ran
    bool m_isForced = false; ///< the shell does not have what was set before
};
