// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "playedservice.h"

#include <QVariantMap>

/// The back-cover daemon of a phone, on the system bus.
class PlayedBackCover : public PlayedService
{
public:
    /// The phone wears no cover.
    PlayedBackCover();

    /// What it answers from now on when it is asked for its properties; it announces nothing.
    void setProperties(const QVariant& id, const QVariant& ready);
    /// Announces changed properties.
    void announce(const QVariantMap& changes);
    /// Sends "PropertiesChanged" with any arguments.
    void sendChange(const QVariantList& arguments);
};

/// The device lock of a phone, on the system bus. It is open.
class PlayedDeviceLock : public PlayedService
{
public:
    PlayedDeviceLock();

    /// What it answers from now on when it is asked for its state; above 0 is locked.
    void setState(const QVariant& state);
    /// Announces a state.
    void announce(const QVariant& state);
};

/// The store client, on the session bus. It takes what it is told.
class PlayedStoreClient : public PlayedService
{
public:
    PlayedStoreClient();
};

/// The feedback service, on the session bus. Each event gets the number 7, and lasts.
class PlayedFeedback : public PlayedService
{
public:
    /// The reason for an event's end that the theme does not have.
    static constexpr quint32 NotFound = 0xffffffff;

    PlayedFeedback();

    /// Announces the end of an event.
    void end(quint32 event, quint32 reason);
    /// Sends "FeedbackEnded" with any arguments.
    void sendEnd(const QVariantList& arguments);
};
