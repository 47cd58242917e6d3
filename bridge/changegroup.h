// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

/// Follows keys of the store that belong together, and tells once when they have come to rest.
///
/// The first change is told after a short rest. While one change follows another closely, as under
/// a client that sets many moodsets in a row, the rest that is asked for is longer, so that only
/// the last one counts. No timer runs while nothing changes. Main thread only.
class ChangeGroup : public QObject
{
    Q_OBJECT
public:
    /// How long nothing may have changed in a burst, and how soon after the last telling a change
    /// makes one.
    static constexpr int BurstRestMs = 250;

    /// Follows all keys below the directories, each with a "/" at its end.
    ChangeGroup(const QList<QByteArray>& directories, int restMs, QObject* parent = nullptr);

    /// Starts to follow; changed() comes once for the values of now.
    void follow();

    /// Counts as a change of a key.
    void touch();

Q_SIGNALS:
    void changed();

private:
    void handleChange(const QByteArray& path);
    void tell();

    const QList<QByteArray> m_directories;
    const int m_restMs;
    QTimer m_rest;
    QElapsedTimer m_sinceTold;
};
