// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The key/value store of a user, which is empty at first. It is emptied with the object, which
/// must outlive the user's daemons.
///
/// Made after the user's folders: the store's service has the machine's folder, whoever the user
/// is, so that the user's is linked to it.
class UserStore
{
public:
    UserStore();
    ~UserStore();
    Q_DISABLE_COPY_MOVE(UserStore)

    /// False if the store could not be made the user's.
    bool isValid() const { return m_valid; }

    /// What another process reads at a key: "'text'"; empty if it is not set.
    static QString value(const QString& key);

    /// What another process finds below a folder, which ends with "/": "/key='text'", sorted.
    static QStringList values(const QString& folder);

    static void write(const QString& key, const QString& value);

private:
    bool m_valid;
};
