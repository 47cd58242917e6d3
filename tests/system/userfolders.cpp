// SPDX-License-Identifier: BSD-3-Clause
#include "userfolders.h"

#include "daemonprocess.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

namespace {

QString newFolder()
{
    QTemporaryDir folder;
    folder.setAutoRemove(false);
    return folder.path();
}

} // namespace

UserFolders::UserFolders()
    : m_root(newFolder())
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_root + QStringLiteral("/config")));
    qputenv("XDG_DATA_HOME", QFile::encodeName(data()));
    m_valid = QDir().mkpath(pictures()) && QDir().mkpath(elsewhere()) && QDir().mkpath(data())
        && DaemonProcess::setPicturesFolder(pictures());
}

UserFolders::~UserFolders()
{
    // This way of removing a directory accepts any name. The rest is removed with the private
    // machine.
    std::error_code error;
    std::filesystem::remove_all(QFile::encodeName(m_root).toStdString(), error);
}

QString UserFolders::pictures() const
{
    return m_root + QStringLiteral("/pictures");
}

QString UserFolders::picture(const QString& name) const
{
    return pictures() + QLatin1Char('/') + name;
}

QString UserFolders::elsewhere() const
{
    return m_root + QStringLiteral("/elsewhere");
}

QString UserFolders::elsewhere(const QString& name) const
{
    return elsewhere() + QLatin1Char('/') + name;
}

QString UserFolders::data() const
{
    return m_root + QStringLiteral("/data");
}
