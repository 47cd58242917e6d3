// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

class UserFolders;

/// The bundles on the machine, of which there are none at first, and the file types that a user's
/// daemon must know to find them. What has been installed goes with the object.
class InstalledBundles
{
public:
    explicit InstalledBundles(const UserFolders& folders);
    ~InstalledBundles();
    Q_DISABLE_COPY_MOVE(InstalledBundles)

    /// False if the user's daemon could not be told of the file types.
    bool isValid() const { return m_valid; }

    /// The folder of the packages, with "/" at its end.
    static QString folder() { return QStringLiteral("/usr/share/moodset/"); }

    /// Copies one of the project's own bundles there.
    Q_REQUIRED_RESULT static bool installSample(const QString& name);

    /// Writes a file, and the folders above it where they are missing.
    Q_REQUIRED_RESULT static bool write(const QString& path, const QByteArray& content);

private:
    bool m_valid;
};
