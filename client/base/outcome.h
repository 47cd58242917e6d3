// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

/// The exit status of the process.
enum class ExitStatus : int {
    Done = 0,
    Failed = 1,
    Usage = 2, ///< The arguments are wrong.
    NoDaemon = 3, ///< The daemon does not run and cannot be started.
    TimedOut = 4, ///< It did not happen in time. It may still happen.
};

/// The outcome of a command.
struct Outcome
{
    ExitStatus status = ExitStatus::Done;
    /// The reason of the failure, in one line. Empty if it succeeded.
    QString error;
    /// The text for people, in whole lines.
    QString text;
    /// The same data for programs, as data/schema/moodsetctl.schema.json describes it.
    QJsonObject result;

    static Outcome done(const QString& text, const QJsonObject& result)
    {
        return {ExitStatus::Done, {}, text, result};
    }
    static Outcome failed(const QString& error, ExitStatus status = ExitStatus::Failed)
    {
        return {status, error, {}, {}};
    }
};
