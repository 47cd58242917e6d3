// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QMap>
#include <QObject>
#include <QProcess>
#include <QStringList>

/// A program that an adapter runs, without input and in a process group of its own.
class HookProcess : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~HookProcess() override;

    /// Runs a program with these environment variables. `done` is called when it ends, with a text
    /// if it has failed; it is not called after end(). If another program still runs, that one is
    /// ended first.
    void run(
        const QString& program, const QMap<QString, QString>& variables, const Adapter::Done& done,
        const QStringList& arguments = {});
    /// Ends the program and all processes of its group.
    void end();

private:
    QProcess* m_process = nullptr; // a child
};
