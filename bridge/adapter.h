// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "appearance.h"

#include <QJsonObject>
#include <QObject>

#include <functional>

/// The record of what an adapter has set. The state file keeps it.
///
/// Each adapter chooses the names of its values: keys of the store, files, or properties.
struct AdapterRecord
{
    /// The values that the user had before the adapter set its own; null if the user had none.
    QJsonObject saved;
    /// The values that the adapter has set, or was setting when it was interrupted.
    QJsonObject set;
    /// The values that it had set before. Both count as set by the adapter.
    QJsonObject earlier;

    /// Whether the adapter has set `value` under this name.
    bool isOwn(const QString& name, const QJsonValue& value) const
    {
        return (set.contains(name) && set.value(name) == value)
            || (earlier.contains(name) && earlier.value(name) == value);
    }
};

/// Sets the look or the sounds of one kind of shell or service.
///
/// No function waits for another process. Functions with a `Done` call it once, immediately or from
/// the event loop. Its argument says in one sentence what went wrong, or is empty. The caller stops
/// waiting after limitMs(), and only one operation runs at a time. Main thread only.
class Adapter : public QObject
{
    Q_OBJECT
public:
    using Done = std::function<void(const QString& failure)>;
    /// Gets the saved values, old and new, or the reason for the failure.
    using SaveDone = std::function<void(const QJsonObject& saved, const QString& failure)>;

    enum class Subject { Look, Sound };

    using QObject::QObject;

    /// The name of the adapter in the configuration and in the status.
    virtual QString name() const = 0;
    virtual Subject subject() const { return Subject::Look; }
    /// Whether the shell still has what was set when it starts again, so that the same need not be
    /// set again.
    virtual bool isKept() const { return true; }
    /// The time limit of each operation, in milliseconds.
    virtual int limitMs() const { return 5000; }

    /// Whether an operation that did not end in time is tried again. A shell may have its name long
    /// before it answers.
    virtual bool isTriedAgain() const { return true; }

    /// Starts to follow whether the shell runs.
    virtual void detect() = 0;
    bool isPresent() const { return m_isPresent; }

    /// The values that apply() should set. Values that cannot be set are left out.
    virtual QJsonObject plan(const Appearance& appearance) const = 0;
    /// Why a value is missing from the plan, in one sentence; empty if none is missing.
    virtual QString shortfall(const Appearance& appearance) const
    {
        Q_UNUSED(appearance)
        return {};
    }

    /// Reads the user's present values under the names of the plan. If a value is the adapter's
    /// own, the value that the record has saved stays.
    virtual void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
    {
        Q_UNUSED(plan)
        done(record.saved, {});
    }
    virtual void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) = 0;
    /// Checks, as far as possible, that the shell has what apply() should have set.
    virtual void verify(const QJsonObject& plan, const Done& done) = 0;
    /// Restores the values that the user had, except those that the user has changed since.
    virtual void restore(const AdapterRecord& record, const Done& done) = 0;
    /// Stops the current operation, because its time is over or the shell has ended.
    virtual void abandon() { }

Q_SIGNALS:
    void presenceChanged();
    /// The shell has lost what was set, for example when it has read its configuration again.
    void forgotten();
    /// The shell may have lost what was set; verify() can tell.
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
