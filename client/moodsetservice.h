// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>

/// The daemon on the session bus.
class MoodsetService : public QObject
{
    Q_OBJECT

public:
    explicit MoodsetService(QObject* parent = nullptr);

    bool isRunning() const;

    /// Whether the session bus can be reached.
    static bool hasBus();

    /// Whether the session bus can start the daemon.
    static bool canBeStarted();

    /// Makes the session bus start the daemon, unless it runs, and waits until it answers. Returns
    /// an empty text, or the reason of the failure and how to start the daemon, in one line.
    QString start() const;

    /// The process that owns the daemon's bus name. 0 if there is none.
    qint64 processId() const;

    /// The daemon's methods. Each waits for the reply, and returns why the call failed, in one
    /// line, or an empty text. A successful call does not say what the daemon has done: read the
    /// database to find out.
    QString indexFile(const QUrl& url) const;
    QString setMoodset(const QUrl& url) const;
    QString createMoodset(const QUrl& url) const;
    QString saveMoodset(qint64 id, const QVariantMap& attributes) const;
    QString removeMoodset(qint64 id) const;
    QString installPackage(const QString& path) const;
    QString refreshMoodsets() const;
    /// Records the address that a file was downloaded from.
    QString saveSource(qint64 fileId, const QString& source) const;

    /// Sends a call that changes nothing. The daemon replies after its current piece of work, and
    /// then alive() is emitted.
    void ask();

Q_SIGNALS:
    /// Content of this type (0 files, 1 moodsets, 2 images, 4 downloads) has changed in the
    /// database.
    void contentChanged(int type);

    /// The daemon has replied to ask().
    void alive();

    /// The daemon has left the bus, or the bus has gone.
    void ended();
};
