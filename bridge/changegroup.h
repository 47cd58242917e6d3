// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

/// Follows keys of the store that belong together. It emits changed() when they have not changed
/// for a short time.
///
/// If changes follow each other closely, for example when a client applies many moodsets in a row,
/// it waits longer, so that only the last change counts. No timer runs while nothing changes. Main
/// thread only.
class ChangeGroup : public QObject
{
    Q_OBJECT
public:
    /// The waiting time in a burst. A burst begins when a key changes within this time after the
    /// last changed().
    static constexpr int BurstRestMs = 250;

    /// Follows all keys below these directories, whose paths end with a "/".
    ChangeGroup(const QList<QByteArray>& directories, int restMs, QObject* parent = nullptr);

    /// Starts to follow. changed() is emitted once for the present values.
    void follow();

    /// Does what a change of a key does.
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
