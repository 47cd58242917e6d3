// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <QVariantList>

/// What of the active moodset reaches the shells and services that run, as moodset-bridge says.
///
/// The bridge is another program, which need not be installed. It is asked in the background when
/// this object is made, when the bridge starts or ends, and some time after each askSoon().
class BridgeStatus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool known READ isKnown NOTIFY changed)
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
    Q_PROPERTY(QVariantList shells READ shells NOTIFY changed)

public:
    /// What the bridge has said.
    struct Report
    {
        /// Reads what `moodset-bridge --status --json` prints.
        static Report fromJson(const QByteArray& json);

        bool isKnown = false; ///< whether it was understood
        bool isRunning = false;
        /// The shells and services that are there, in the bridge's order: objects with `name`,
        /// with `text`, which says what they have got or why not, and with `failed`.
        QVariantList shells;
    };

    /// How long the bridge may take to say it, in milliseconds.
    static constexpr int LimitMs = 5000;
    /// When it is asked after a change, each in milliseconds after the one before: its adapters are
    /// done at once, or later where a shell is slow, and have given up before the last one.
    static constexpr int DelaysMs[] = {300, 1500, 6000};

    explicit BridgeStatus(QObject* parent = nullptr);
    /// The same with another program.
    explicit BridgeStatus(const QString& program, QObject* parent = nullptr);
    ~BridgeStatus() override;

    /// Whether there is a bridge that has said how it is.
    bool isKnown() const { return m_report.isKnown; }
    bool isRunning() const { return m_report.isRunning; }
    QVariantList shells() const { return m_report.shells; }

    /// Has the bridge asked after something has changed that it hands on.
    Q_INVOKABLE void askSoon();

Q_SIGNALS:
    void changed();

private:
    static QString installedProgram();

    void ask();
    void askAfterNextDelay();
    void take(int exitCode, QProcess::ExitStatus status);

    const QString m_program;
    QDBusServiceWatcher m_watcher;
    QProcess m_process;
    QTimer m_limit;
    QTimer m_soon;
    int m_nextDelay = 0;
    bool m_isStale = false; ///< it was asked for while the program ran
    Report m_report;
};
