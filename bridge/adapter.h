// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "appearance.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <algorithm>
#include <functional>

/// What an adapter has done so far; kept in the state file.
///
/// Values have names of the adapter's own choice: keys of the store, files, properties.
struct AdapterRecord
{
    /// What the user had where the adapter sets something: null where nothing was set.
    QJsonObject saved;
    /// What the adapter has set, or was about to set when it was interrupted.
    QJsonObject set;
    /// What it had set before that, the last one last, as long as it may be what is in place: the
    /// process may have been killed, and a service may not have come to the newest yet. All count
    /// as set by the adapter.
    QJsonArray earlier;

    /// Whether `value` is what the adapter has set under this name.
    bool isOwn(const QString& name, const QJsonValue& value) const
    {
        const auto has = [&](const QJsonValue& values) {
            const QJsonObject object = values.toObject();
            return object.contains(name) && object.value(name) == value;
        };
        return has(set) || std::any_of(earlier.begin(), earlier.end(), has);
    }
};

/// Hands the look or the sound on to one kind of shell or service.
///
/// No function waits for another process. Those that take a `Done` call it once, at once or from
/// the event loop, with what went wrong in one sentence, or with an empty text. Who calls them
/// stops waiting after limitMs(), and one operation runs at a time. Main thread only.
class Adapter : public QObject
{
    Q_OBJECT
public:
    using Done = std::function<void(const QString& failure)>;
    /// With the saved values, old and new, or with what went wrong.
    using SaveDone = std::function<void(const QJsonObject& saved, const QString& failure)>;

    enum class Subject { Look, Sound };

    using QObject::QObject;

    /// The name in the configuration and in the status.
    virtual QString name() const = 0;
    virtual Subject subject() const { return Subject::Look; }
    /// Whether what has been set outlasts the shell, so that the same need not be set again.
    virtual bool isKept() const { return true; }
    /// The time limit of each operation, in milliseconds.
    virtual int limitMs() const { return 5000; }

    /// Whether an operation that did not end in time, or whose result was not to be seen, is tried
    /// again: a shell may have its name long before it answers.
    virtual bool isTriedAgain() const { return true; }

    /// Starts to follow whether the shell is there.
    virtual void detect() = 0;
    bool isPresent() const { return m_isPresent; }

    /// The values that apply() is to set. Values that cannot be set are left out.
    virtual QJsonObject plan(const Appearance& appearance) const = 0;
    /// Why the plan lacks something, in one sentence; empty if it lacks nothing.
    virtual QString shortfall(const Appearance& appearance) const
    {
        Q_UNUSED(appearance)
        return {};
    }

    /// Reads the values of the plan's names as the user has them. Values that are the adapter's own
    /// are not the user's: for these, what the record has saved stays.
    virtual void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
    {
        Q_UNUSED(plan)
        done(record.saved, {});
    }
    virtual void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) = 0;
    /// Checks, as far as that is possible, that the shell has what apply() was to set.
    virtual void verify(const QJsonObject& plan, const Done& done) = 0;
    /// Brings back what the user had, except for values that the user has changed since.
    virtual void restore(const AdapterRecord& record, const Done& done) = 0;
    /// Stops what is still under way, because the time is up or the shell has gone.
    virtual void abandon() { }

Q_SIGNALS:
    void presenceChanged();
    /// The shell has lost what was set, as after a reload of its configuration.
    void forgotten();
    /// What was set may not have lasted; verify() tells.
    void doubted();

protected:
    void setPresent(bool isPresent)
    {
        if (m_isPresent != isPresent) {
            m_isPresent = isPresent;
            Q_EMIT presenceChanged();
        }
    }

private:
    bool m_isPresent = false;
};
