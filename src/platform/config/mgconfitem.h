// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QScopedPointer>
#include <QVariant>

struct MGConfItemPrivate;

/// One key of the user's key/value store, which all processes of the user share.
///
/// Values are booleans, integers, double, QString, QStringList, QByteArray, and QVariantList and
/// QVariantMap of these. A float is read as a double, and a short integer as a longer one. Nothing
/// is cached. An item needs little memory, and there may be many items for one key.
///
/// Main thread only. The application object must exist. Only sync() waits, even if the store is
/// missing, damaged or hangs. Then a value is read as unset or as it was last stored. If a value
/// cannot be stored, it is changed back soon after set(), and valueChanged() is emitted again. If
/// the process has followed or set a key and loses its session bus, it ends.
class MGConfItem : public QObject
{
    Q_OBJECT
public:
    /// An item for `key`, such as "/desktop/vendor/thing". If a key does not begin with "/", ends
    /// with "/", or contains "//" or a NUL, there is one warning, and the key is never set.
    explicit MGConfItem(const QString& key, QObject* parent = nullptr);
    ~MGConfItem() override;

    /// The user's value, or else the system's default. An invalid variant if there is neither, or
    /// if the type is not in the list above (a warning).
    QVariant value() const;

    /// The same value, or `defaultValue` if it is invalid.
    QVariant value(const QVariant& defaultValue) const;

    /// Sets the value, or clears the user's value if `value` is invalid. Nothing changes, and a
    /// warning is logged, if the type is not in the list above, if a text contains a NUL, or if
    /// this is the first value that the process sets and it has too few file descriptors left.
    /// Other items of this process see the value at once, and other processes see it soon. It is
    /// certainly stored only after sync() or after the application's normal end.
    void set(const QVariant& value);

    /// Returns when all values that this process has set are stored or have failed. If the store
    /// hangs, this takes 25 s for each value.
    static void sync();

Q_SIGNALS:
    /// The value has changed, by this object or by anyone else. It is always emitted from the event
    /// loop, once per change for each item of the key. An item sees changes only after its first
    /// connection.
    void valueChanged();

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    void follow();
    void announceChange(const QByteArray& path);

    QScopedPointer<MGConfItemPrivate> m_d;
};
