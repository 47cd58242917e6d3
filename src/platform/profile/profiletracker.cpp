// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"

#include "profiletracker.h"
#include "profilevalues.h"

#include <utility>

ProfileTracker& ProfileTracker::instance()
{
    // The tracker is never deleted: static objects may remove their callbacks after all other
    // static objects are destroyed.
    static auto* const tracker = new ProfileTracker;
    return *tracker;
}

void ProfileTracker::start()
{
    if (m_running) {
        return;
    }
    m_running = true;
    DconfStore& store = DconfStore::instance();
    store.watch(ProfileValues::Directory);
    connect(&store, &DconfStore::changed, this, &ProfileTracker::handleChange);
    // These exist even while they have no values of their own; they show the values of the fallback
    // profile.
    m_profiles = {ProfileValues::FallbackProfile, "general", "moodset", "silent"};
    learnStoredNames();
    m_activeProfile = ProfileValues::activeProfile();
    m_values = currentValues();
}

void ProfileTracker::stop()
{
    if (!m_running) {
        return;
    }
    m_running = false;
    DconfStore& store = DconfStore::instance();
    disconnect(&store, &DconfStore::changed, this, &ProfileTracker::handleChange);
    store.unwatch(ProfileValues::Directory);
}

// A change by this process is reported inside the call, where callbacks must not run. The values
// are compared later, in their present state, so no callback gets an outdated value.
void ProfileTracker::handleChange(const QByteArray& path)
{
    if (!path.startsWith(ProfileValues::Directory) && !touchesKey(path, ProfileValues::Directory)) {
        return;
    }
    learnName(path);
    if (m_comparisonScheduled) {
        return;
    }
    m_comparisonScheduled = true;
    QMetaObject::invokeMethod(this, &ProfileTracker::compare, Qt::QueuedConnection);
}

// The store does not list a name that this process has just written.
void ProfileTracker::learnName(const QByteArray& path)
{
    const QList<QByteArray> names = path.mid(ProfileValues::Directory.size()).split('/');
    if (names.size() != 2 || names.contains(QByteArray())) {
        return;
    }
    m_profiles.insert(names.first());
    m_keys.insert(names.last());
}

void ProfileTracker::learnStoredNames()
{
    const DconfStore& store = DconfStore::instance();
    const QList<QByteArray> directories = store.list(ProfileValues::Directory);
    for (const QByteArray& profile : directories) {
        if (!profile.endsWith('/')) {
            continue;
        }
        m_profiles.insert(profile.chopped(1));
        const QList<QByteArray> keys = store.list(ProfileValues::Directory + profile);
        for (const QByteArray& key : keys) {
            if (!key.endsWith('/')) {
                m_keys.insert(key);
            }
        }
    }
}

ProfileTracker::Values ProfileTracker::currentValues() const
{
    Values values;
    for (const QByteArray& profile : m_profiles) {
        for (const QByteArray& key : m_keys) {
            values.insert({profile, key}, ProfileValues::value(profile, key));
        }
    }
    return values;
}

void ProfileTracker::compare()
{
    m_comparisonScheduled = false;
    if (!m_running) {
        return;
    }
    learnStoredNames();
    m_profiles.insert(ProfileValues::activeProfile());
    const QByteArray formerProfile = std::exchange(m_activeProfile, ProfileValues::activeProfile());
    const Values formerValues = std::exchange(m_values, currentValues());
    if (m_activeProfile != formerProfile) {
        profileCallbacks.call(QByteArray(m_activeProfile).constData());
    }
    const Values values = m_values;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        // Before it existed, a new profile had the values of the fallback profile.
        const QByteArray former = formerValues.value(
            value.key(), formerValues.value({ProfileValues::FallbackProfile, value.key().key}));
        if (value.value() != former) {
            announceValue(value.key(), value.value());
        }
    }
}

void ProfileTracker::announceValue(const Name& name, const QByteArray& value) const
{
    const char* const text = value.isEmpty() ? nullptr : value.constData();
    changeCallbacks.call(name.profile.constData(), name.key.constData(), text, "");
    if (name.profile == ProfileValues::activeProfile()) {
        activeCallbacks.call(name.profile.constData(), name.key.constData(), text, "");
    }
}
