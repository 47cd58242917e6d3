// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/// The key/value store of a user, which is empty at first. It is emptied when the object is
/// destroyed. The object must outlive the user's daemons.
///
/// Make it after the user's directories: the store's service always uses the directory of the
/// machine, so the user's directory is a link to it.
class UserStore
{
public:
    UserStore();
    ~UserStore();
    Q_DISABLE_COPY_MOVE(UserStore)

    /// False if the user could not get the store.
    bool isValid() const { return m_valid; }

    /// The value that another process reads at a key: "'text'". Empty if it is not set.
    static QString value(const QString& key);

    /// The keys that another process finds below a directory, whose path ends with "/":
    /// "/key='text'", sorted.
    static QStringList values(const QString& folder);

    static void write(const QString& key, const QString& value);

    /// Tells the daemon the size of the screen, in pixels.
    static void writeScreenSize(const QSize& size);

private:
    bool m_valid;
};
