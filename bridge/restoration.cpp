// SPDX-License-Identifier: BSD-3-Clause
#include "restoration.h"

#include <QPointer>

Restoration::Restoration(
    std::vector<std::unique_ptr<Adapter>> adapters, StateRecord* state, QObject* parent)
    : QObject(parent)
    , m_adapters(std::move(adapters))
    , m_state(state)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        m_adapters.at(m_index)->abandon();
        handleRestored(QStringLiteral("It did not answer in time."));
    });
}

void Restoration::start()
{
    QMetaObject::invokeMethod(this, &Restoration::restoreNext, Qt::QueuedConnection);
}

void Restoration::restoreNext()
{
    while (m_index < m_adapters.size()
           && !m_state->adapters.contains(m_adapters.at(m_index)->name())) {
        ++m_index;
    }
    if (m_index == m_adapters.size()) {
        Q_EMIT finished();
        return;
    }
    Adapter& adapter = *m_adapters.at(m_index);
    m_limit.start(adapter.limitMs());
    const QPointer<Restoration> guard(this);
    const size_t index = m_index;
    adapter.restore(
        m_state->adapters.value(adapter.name()).record, [guard, index](const QString& failure) {
            Restoration* const self = guard.data();
            if (self && self->m_index == index) {
                self->handleRestored(failure);
            }
        });
}

void Restoration::handleRestored(const QString& failure)
{
    m_limit.stop();
    const QString name = m_adapters.at(m_index)->name();
    if (failure.isEmpty()) {
        m_state->adapters.remove(name);
    } else {
        m_failures.append(name + QStringLiteral(": ") + failure);
    }
    ++m_index;
    start();
}
