// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "profilecallbacks.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QSet>

#include <tuple>

/// Follows the profiles in the key/value store and calls the callbacks of profile.h.
class ProfileTracker : public QObject
{
    Q_OBJECT
public:
    static ProfileTracker& instance();

    void start();
    void stop();

    ProfileCallbacks<profile_track_profile_fn> profileCallbacks;
    ProfileCallbacks<profile_track_value_fn> activeCallbacks;
    ProfileCallbacks<profile_track_value_fn> changeCallbacks;

private:
    struct Name
    {
        QByteArray profile;
        QByteArray key;
    };
    friend bool operator<(const Name& left, const Name& right)
    {
        return std::tie(left.profile, left.key) < std::tie(right.profile, right.key);
    }
    using Values = QMap<Name, QByteArray>;

    ProfileTracker() = default;
    void handleChange(const QByteArray& path);
    void learnName(const QByteArray& path);
    void learnStoredNames();
    Values currentValues() const;
    void compare();
    void announceValue(const Name& name, const QByteArray& value) const;

    bool m_running = false;
    bool m_comparisonScheduled = false;
    QSet<QByteArray> m_profiles;
    QSet<QByteArray> m_keys;
    QByteArray m_activeProfile;
    Values m_values;
};
