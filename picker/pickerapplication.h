// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// The program on the session bus, with the interface org.freedesktop.Application. Launchers start
/// the program by its name, and a second process passes its arguments to the first one.
class PickerApplication : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

    /// Takes the program's name on the bus. False if another process has it. True if there is no
    /// bus.
    bool claim();

    /// Makes the process with the name open the URLs, or show its window if there are none. False
    /// if that process does not answer.
    static bool handOver(const QStringList& urls);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& urls, const QVariantMap& platformData);
    void ActivateAction(
        const QString& action, const QVariantList& parameter, const QVariantMap& platformData);

Q_SIGNALS:
    void activated();
    void openRequested(const QString& url);
};
