// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QMap>
#include <QObject>
#include <QProcess>
#include <QStringList>

/// A program that is run for an adapter, without input, in a process group of its own.
class HookProcess : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~HookProcess() override;

    /// Runs a program with the variables in its environment. `done` comes at its end, with a text
    /// if it has failed; not after end(). One that still runs is ended first.
    void run(
        const QString& program, const QMap<QString, QString>& variables, const Adapter::Done& done,
        const QStringList& arguments = {});
    /// Ends the program, and what it has started in its group.
    void end();

private:
    QProcess* m_process = nullptr; // a child
};
