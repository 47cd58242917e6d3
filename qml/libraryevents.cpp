// SPDX-License-Identifier: BSD-3-Clause
#include "libraryevents.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <moodsetnames.h>

namespace Bus = MoodsetNames::Bus;

std::shared_ptr<LibraryEvents> LibraryEvents::instance()
{
    static std::weak_ptr<LibraryEvents> shared;
    std::shared_ptr<LibraryEvents> events = shared.lock();
    if (!events) {
        events = std::make_shared<LibraryEvents>();
        shared = events;
    }
    return events;
}

LibraryEvents::LibraryEvents()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(
        Bus::Service, Bus::Path, Bus::Interface, Bus::ContentChanged, this,
        SIGNAL(contentChanged(int)));
    const auto* const watcher = new QDBusServiceWatcher(
        Bus::Service, bus,
        QDBusServiceWatcher::WatchForRegistration | QDBusServiceWatcher::WatchForUnregistration,
        this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &LibraryEvents::daemonStarted);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &LibraryEvents::daemonEnded);
}
