// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "playedservice.h"

#include <QVariantMap>

/// The back-cover daemon of a phone, on the system bus.
class PlayedBackCover : public PlayedService
{
public:
    /// The phone has no back cover.
    PlayedBackCover();

    /// Sets the properties that it returns from now on, without announcing them.
    void setProperties(const QVariant& id, const QVariant& ready);
    /// Announces changed properties.
    void announce(const QVariantMap& changes);
    /// Sends "PropertiesChanged" with any arguments.
    void sendChange(const QVariantList& arguments);
};

/// The device lock of a phone, on the system bus. At first it is open.
class PlayedDeviceLock : public PlayedService
{
public:
    PlayedDeviceLock();

    /// Sets the state that it returns from now on. A state above 0 means locked.
    void setState(const QVariant& state);
    /// Announces a state.
    void announce(const QVariant& state);
};

/// The store client, on the session bus. It accepts all calls.
class PlayedStoreClient : public PlayedService
{
public:
    PlayedStoreClient();
};

/// The feedback service, on the session bus. Each event gets the number 7 and does not end.
class PlayedFeedback : public PlayedService
{
public:
    /// The reason for the end of an event that is not in the theme.
    static constexpr quint32 NotFound = 0xffffffff;

    PlayedFeedback();

    /// Announces the end of an event.
    void end(quint32 event, quint32 reason);
    /// Sends "FeedbackEnded" with any arguments.
    void sendEnd(const QVariantList& arguments);
};
