// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "staterecord.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

/// Restores the values that the user had before the adapters set theirs, one adapter after the
/// other. Main thread only.
class Restoration : public QObject
{
    Q_OBJECT
public:
    /// `state` must outlive the object.
    Restoration(
        std::vector<std::unique_ptr<Adapter>> adapters, StateRecord* state,
        QObject* parent = nullptr);

    /// Starts. finished() is emitted from the event loop or inside this function.
    void start();

    /// What could not be restored, with one sentence for each. The state no longer contains what
    /// was restored.
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
