// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// The program on the session bus, as org.freedesktop.Application describes it: launchers start it
/// by its name, and a second start hands what it was to open to the first.
class PickerApplication : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

    /// Takes the program's name on the bus. False if another process has it. Without a bus, the
    /// program is on its own, and this is true.
    bool claim();

    /// Has the process that has the name open the URLs, or show itself if there are none. False if
    /// it does not answer.
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
