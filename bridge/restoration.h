// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "staterecord.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

/// Brings back what the user had before adapters set anything, one adapter after the other. Main
/// thread only.
class Restoration : public QObject
{
    Q_OBJECT
public:
    /// `state` must outlive the object.
    Restoration(
        std::vector<std::unique_ptr<Adapter>> adapters, StateRecord* state,
        QObject* parent = nullptr);

    /// Starts; finished() comes from the event loop or from inside.
    void start();

    /// What could not be brought back, a sentence each. What an adapter could bring back is not in
    /// the state any more.
    QStringList failures() const { return m_failures; }

Q_SIGNALS:
    void finished();

private:
    void restoreNext();
    void handleRestored(const QString& failure);

    const std::vector<std::unique_ptr<Adapter>> m_adapters;
    StateRecord* const m_state;
    size_t m_index = 0;
    QTimer m_limit;
    QStringList m_failures;
};
