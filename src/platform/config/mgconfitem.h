// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QScopedPointer>
#include <QVariant>

struct MGConfItemPrivate;

/// One key of the user's key/value store, which all processes of the user share.
///
/// Values are booleans, integers, double, QString, QStringList, QByteArray, and QVariantList and
/// QVariantMap of these. A float comes back as a double, a short integer as a longer one. Nothing
/// is cached: an item costs little, and many may be made on one key.
///
/// Main thread only, after the application object is made. No function but sync() waits for
/// anything, with a store that is missing, broken or hung neither: then values read as unset or as
/// last stored, and a value that cannot be stored is taken back soon after set(), with a second
/// valueChanged(). The process ends with its session bus once it has followed or set a key.
class MGConfItem : public QObject
{
    Q_OBJECT
public:
    /// An item on `key`, such as "/desktop/vendor/thing". A key that has no "/" in front, has one
    /// at its end or two in a row, or has a NUL in it is warned of once and is never set.
    explicit MGConfItem(const QString& key, QObject* parent = nullptr);
    ~MGConfItem() override;

    /// The value, the system's default if the user has none, or an invalid variant if there is
    /// neither or it has a type that is not in the list above (a warning).
    QVariant value() const;

    /// The same, with `defaultValue` in place of an invalid variant.
    QVariant value(const QVariant& defaultValue) const;

    /// Sets the value, or clears the user's if `value` is invalid. A type that is not in the list
    /// above, and a text with a NUL in it, change nothing but the log (a warning). Other items of
    /// this process see the value at once, other processes soon; it outlives this process for sure
    /// only after sync() or the application's orderly end.
    void set(const QVariant& value);

    /// Returns when all that this process has set is stored, or has failed. A store that stands
    /// still is given up after 25 s for each value.
    static void sync();

Q_SIGNALS:
    /// The value has changed, by whomever, this object included. Always comes from the event loop,
    /// once per change to each item of the key. An item counts changes from its first connection
    /// on.
    void valueChanged();

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    void follow();
    void announceChange(const QByteArray& path);

    QScopedPointer<MGConfItemPrivate> m_d;
};
