// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "bridgeconfiguration.h"
#include "staterecord.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

/// Runs the steps of one adapter: save, apply, verify.
///
/// It runs when the shell runs and something is not set yet. A new look or sound that arrives
/// during a run waits until the run ends, and only the newest one counts. A step that does not end
/// in time is cancelled, so that one shell does not delay the others. Main thread only.
class AdapterDriver : public QObject
{
    Q_OBJECT
public:
    /// `state` must outlive the driver.
    AdapterDriver(
        std::unique_ptr<Adapter> adapter, AdapterSetting setting, StateRecord* state,
        QObject* parent = nullptr);

    /// Starts to follow the shell, unless the adapter is off.
    void start();
    /// Makes the adapter set the newest look or sound.
    void hand(const Appearance& appearance);

    Adapter::Subject subject() const { return m_adapter->subject(); }
    bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    /// The state has changed and should be stored soon.
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
    /// Ends a run that is not needed any more, without a message.
    void interrupt();
    void giveUp(const QString& reason);
    /// Ends a run. After a failure, the adapter tries again when a look arrives or the shell comes
    /// back.
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
    int m_retriesLeft = 0;
    quint64 m_step =
        0; ///< distinguishes the answer of the current step from that of a cancelled one
    bool m_isRunning = false;
    bool m_isVerifying = false;
    bool m_isStale = false; ///< a new look or sound has arrived during the run
    bool m_isForced = false; ///< the shell has lost what was set before
};
