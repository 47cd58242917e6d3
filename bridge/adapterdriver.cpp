// SPDX-License-Identifier: BSD-3-Clause
#include "adapterdriver.h"

#include "oneline.h"
#include "storetexts.h"

#include <QDateTime>
#include <QDebug>
#include <QPointer>

#include <utility>

namespace {

/// How often, and how long after, a shell is asked again that did not answer in time, or does not
/// have what was set.
constexpr int Retries = 3;
constexpr int RetryMs = 5000;
/// How long after a look was set the record of what was set before is given up.
constexpr int SettlingMs = 500;
/// How much of what was set before is kept, while one run after the other is interrupted.
constexpr int MostEarlier = 16;

void overlay(QJsonObject* values, const QJsonObject& newer)
{
    for (auto value = newer.begin(); value != newer.end(); ++value) {
        values->insert(value.key(), value.value());
    }
}

} // namespace

AdapterDriver::AdapterDriver(
    std::unique_ptr<Adapter> adapter, AdapterSetting setting, StateRecord* state, QObject* parent)
    : QObject(parent)
    , m_adapter(std::move(adapter))
    , m_setting(setting)
    , m_state(state)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        giveUp(QStringLiteral("It did not answer within %1 s.").arg(m_adapter->limitMs() / 1000.0));
        retryLater();
    });
    m_retry.setSingleShot(true);
    m_retry.setInterval(RetryMs);
    connect(&m_retry, &QTimer::timeout, this, &AdapterDriver::startRunIfNeeded);
    m_settling.setSingleShot(true);
    m_settling.setInterval(SettlingMs);
    connect(&m_settling, &QTimer::timeout, this, [this] {
        // If this process is killed later, the store has at least what was set last.
        StoreTexts::flush();
        this->state().record.earlier = QJsonArray();
        Q_EMIT stateChanged();
        Q_EMIT rested();
    });
}

void AdapterDriver::start()
{
    state().setting = settingName(m_setting);
    state().isPresent = false;
    if (m_setting == AdapterSetting::Off) {
        return;
    }
    connect(m_adapter.get(), &Adapter::presenceChanged, this, &AdapterDriver::handlePresence);
    connect(m_adapter.get(), &Adapter::forgotten, this, &AdapterDriver::handleForgotten);
    connect(m_adapter.get(), &Adapter::doubted, this, &AdapterDriver::handleDoubt);
    m_isForced = !m_adapter->isKept();
    m_adapter->detect();
}

void AdapterDriver::hand(const Appearance& appearance)
{
    m_appearance = appearance;
    m_retriesLeft = Retries;
    const bool isCheckInterrupted = m_isVerifying;
    if (m_isVerifying) {
        // The step that it waits for is over.
        interrupt();
    }
    m_isStale = m_isRunning;
    startRunIfNeeded();
    if (isCheckInterrupted) {
        // If nothing new has to be set, nobody else would do this check.
        handleDoubt();
    }
}

void AdapterDriver::handlePresence()
{
    state().isPresent = m_adapter->isPresent();
    m_retriesLeft = Retries;
    Q_EMIT stateChanged();
    if (!m_adapter->isKept()) {
        m_isForced = true;
    }
    if (m_adapter->isPresent()) {
        startRunIfNeeded();
    } else if (m_isRunning && m_setting != AdapterSetting::On) {
        giveUp(QStringLiteral("It went away while it was being set."));
    }
}

void AdapterDriver::handleForgotten()
{
    m_isForced = true;
    interrupt();
    startRunIfNeeded();
}

void AdapterDriver::interrupt()
{
    ++m_step;
    m_limit.stop();
    m_isRunning = false;
    m_isVerifying = false;
    m_adapter->abandon();
}

void AdapterDriver::handleDoubt()
{
    if (!m_isRunning && !m_plan.isEmpty()) {
        m_isRunning = true;
        verify();
    }
}

void AdapterDriver::startRunIfNeeded()
{
    const bool isWanted = m_setting == AdapterSetting::On
        || (m_setting == AdapterSetting::Auto && m_adapter->isPresent());
    if (m_isRunning || !isWanted || !m_appearance) {
        return;
    }
    const QJsonObject plan = m_adapter->plan(*m_appearance);
    if (plan.isEmpty()) {
        state().failure = m_adapter->shortfall(*m_appearance);
        Q_EMIT stateChanged();
    } else if (m_isForced || !isPlanSet(plan)) {
        run(plan);
    } else {
        m_plan = plan;
    }
}

bool AdapterDriver::isPlanSet(const QJsonObject& plan) const
{
    const AdapterState state = m_state->adapters.value(m_adapter->name());
    // Of a run that was interrupted, the record tells what was to be set, not what is.
    if (state.time.isEmpty() || state.isUnfinished
        || state.failure != m_adapter->shortfall(*m_appearance)) {
        return false;
    }
    QJsonObject both = state.record.set;
    overlay(&both, plan);
    return both == state.record.set;
}

void AdapterDriver::run(const QJsonObject& plan)
{
    m_isRunning = true;
    m_isStale = false;
    m_isForced = false;
    m_plan = plan;
    m_limit.start(m_adapter->limitMs());
    const QPointer<AdapterDriver> guard(this);
    const quint64 step = ++m_step;
    m_adapter->save(
        plan, state().record, [guard, step](const QJsonObject& saved, const QString& failure) {
            AdapterDriver* const driver = guard.data();
            if (!driver || driver->m_step != step) {
                return;
            }
            if (failure.isEmpty()) {
                driver->apply(saved);
            } else {
                driver->finish(failure);
            }
        });
}

// The user's values must be on the disk before they are replaced.
void AdapterDriver::apply(const QJsonObject& saved)
{
    AdapterRecord& record = state().record;
    record.saved = saved;
    if (!record.set.isEmpty() && !record.earlier.contains(record.set)) {
        record.earlier.append(record.set);
    }
    if (record.earlier.size() > MostEarlier) {
        record.earlier.removeFirst();
    }
    overlay(&record.set, m_plan);
    state().isUnfinished = true;
    m_settling.stop();
    const QString failure = m_state->store();
    if (!failure.isEmpty() && !saved.isEmpty()) {
        finish(failure);
        return;
    }
    m_adapter->apply(*m_appearance, m_plan, then(&AdapterDriver::verify));
}

void AdapterDriver::verify()
{
    m_isVerifying = true;
    m_adapter->verify(m_plan, then(&AdapterDriver::conclude));
}

void AdapterDriver::conclude()
{
    m_isVerifying = false;
    state().time = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    state().isUnfinished = false;
    m_settling.start();
    finish(m_adapter->shortfall(*m_appearance));
}

void AdapterDriver::retryLater()
{
    if (m_adapter->isTriedAgain() && m_retriesLeft > 0) {
        --m_retriesLeft;
        m_retry.start();
    }
}

void AdapterDriver::giveUp(const QString& reason)
{
    m_adapter->abandon();
    m_isVerifying = false;
    finish(reason);
}

void AdapterDriver::finish(const QString& failure)
{
    ++m_step;
    m_limit.stop();
    m_isRunning = false;
    // While a shell starts, its programs may write over each other's settings.
    if (std::exchange(m_isVerifying, false)) {
        retryLater();
    }
    if (!failure.isEmpty() && failure != state().failure) {
        qWarning().noquote() << oneLine(m_adapter->name() + QStringLiteral(": ") + failure);
    }
    state().failure = failure;
    Q_EMIT stateChanged();
    Q_EMIT rested();
    if (std::exchange(m_isStale, false)) {
        startRunIfNeeded();
    }
}

Adapter::Done AdapterDriver::then(void (AdapterDriver::*next)())
{
    m_limit.start(m_adapter->limitMs());
    const QPointer<AdapterDriver> guard(this);
    const quint64 step = ++m_step;
    return [guard, step, next](const QString& failure) {
        AdapterDriver* const driver = guard.data();
        if (!driver || driver->m_step != step) {
            return;
        }
        if (failure.isEmpty()) {
            (driver->*next)();
        } else {
            driver->finish(failure);
        }
    };
}
