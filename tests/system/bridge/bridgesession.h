// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "testfolder.h"

#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

/// A user's bridge, and the keys that it follows, which the test writes as the daemon does.
///
/// The store, the files of the bridge and its configuration are empty at first. Warnings that the
/// test does not take make it fail. Declare it after the shells and services of the test, so that
/// it ends first: if a shell ends while the bridge sets something in it, the bridge logs a warning.
class BridgeSession
{
public:
    static constexpr int DeadlineMs = 10000;

    /// The keys of the wallpaper, the highlight colour and the active moodset.
    static const QString WallpaperKey;
    static const QString HighlightKey;
    static const QString MoodsetKey;
    /// The key of the picture for GNOME and Phosh, and the key of the accent colour.
    static const QString PictureUriKey;
    static const QString AccentKey;

    BridgeSession();
    ~BridgeSession();
    Q_DISABLE_COPY_MOVE(BridgeSession)

    /// Writes the configuration. Must come before start().
    static void configure(const QByteArray& text);
    void setEnvironment(const QString& name, const QString& value);

    /// Starts the bridge, and waits until it has handled the present keys.
    Q_REQUIRED_RESULT bool start();
    /// Ends the bridge, and waits for its end.
    void kill();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    Q_REQUIRED_RESULT bool waitForEnd();
    qint64 processId() const { return m_process.processId(); }

    /// Runs the bridge's program with these options to its end. Returns the exit status.
    int run(const QStringList& options);
    /// The output of the last run(), of both channels.
    QString output() const { return m_output; }

    /// The status of an adapter in the output of `--status --json`.
    QJsonObject status(const QString& adapter);
    /// The part of the status with the values that were set.
    QJsonObject values(const QString& adapter);
    /// Waits until the status of an adapter fulfils the condition.
    Q_REQUIRED_RESULT bool waitForStatus(
        const QString& adapter, const std::function<bool(const QJsonObject&)>& condition);
    /// Waits until an adapter has handled a look, with whatever outcome.
    Q_REQUIRED_RESULT bool waitForFirstLook(const QString& adapter);
    /// Waits until the failure of an adapter has this part, or until it has none if the part is
    /// empty.
    Q_REQUIRED_RESULT bool waitForFailure(const QString& adapter, const QString& part);

    /// Writes keys in one step, as the daemon does; an empty text clears a key.
    static void write(const QMap<QString, QString>& keys);
    /// Returns when the store has dealt with all that other processes have written by now.
    static void settleStore();
    /// Writes a small picture with this colour, and gives its path.
    QString picture(const QString& name, const QColor& color);
    /// Writes a wallpaper and a highlight colour to the keys.
    static void setLook(const QString& wallpaper, const QString& highlight);

    /// A text in the store, as another process reads it; empty if there is none.
    static QString stored(const QString& key);
    /// The copies of wallpapers that exist.
    static QStringList copies();
    static QString dataFolder();

    /// Takes the warnings of the bridge so far.
    QStringList takeWarnings();

    TestFolder folder;

private:
    QProcess m_process;
    QString m_output;
    QByteArray m_log;
    int m_warningsTaken = 0;
};

/// Waits until the condition is true, and runs the event loop meanwhile. False after the deadline.
Q_REQUIRED_RESULT bool waitUntil(const std::function<bool()>& condition);
