// SPDX-License-Identifier: BSD-3-Clause
#include "testfolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Fails the current test unless an operation on `name` succeeded.
void require(bool succeeded, const char* operation, const QString& name)
{
    if (!succeeded) {
        const QString reason =
            QStringLiteral("%1 %2: %3").arg(QLatin1String(operation), name, qt_error_string());
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
    }
}

void writeFile(const QByteArray& path, const QByteArray& content)
{
    // QFile accepts only paths that are valid UTF-8.
    FILE* const stream = std::fopen(path.constData(), "w");
    const auto size = size_t(content.size());
    const bool written = stream && std::fwrite(content.constData(), 1, size, stream) == size;
    const bool closed = stream && std::fclose(stream) == 0;
    require(written && closed, "write", QString::fromLatin1(path));
}

} // namespace

TestFolder::TestFolder()
{
    require(m_folder.isValid(), "make", QStringLiteral("temporary folder"));
}

TestFolder::~TestFolder()
{
    // QTemporaryDir would not see these entries, and could not remove the directory.
    for (const QByteArray& entry : m_rawEntries) {
        require(std::remove(entry.constData()) == 0, "remove", QString::fromLatin1(entry));
    }
}

QString TestFolder::path() const
{
    return m_folder.path();
}

QString TestFolder::path(const QString& name) const
{
    return m_folder.path() + QLatin1Char('/') + name;
}

void TestFolder::write(const QString& name, const QByteArray& content)
{
    writeFile(QFile::encodeName(path(name)), content);
}

void TestFolder::writeRawName(const QByteArray& name, const QByteArray& content)
{
    writeFile(rawPath(name), content);
    m_rawEntries.append(rawPath(name));
}

void TestFolder::makeRawDirectory(const QByteArray& name)
{
    require(mkdir(rawPath(name).constData(), 0700) == 0, "make folder", QString::fromLatin1(name));
    m_rawEntries.append(rawPath(name));
}

QByteArray TestFolder::rawPath(const QByteArray& name) const
{
    return QFile::encodeName(m_folder.path()) + '/' + name;
}

void TestFolder::setModified(const QString& name, const QDateTime& time)
{
    // Unlike Qt's own function, this can also set times before 1970.
    const qint64 milliseconds = time.toMSecsSinceEpoch();
    const qint64 remainder = ((milliseconds % 1000) + 1000) % 1000;
    const timespec modified{time_t((milliseconds - remainder) / 1000), long(remainder) * 1000000};
    const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, modified};
    require(
        utimensat(AT_FDCWD, QFile::encodeName(path(name)).constData(), times.data(), 0) == 0,
        "set the time of", name);
}

void TestFolder::setMode(const QString& name, unsigned int mode)
{
    require(chmod(QFile::encodeName(path(name)).constData(), mode) == 0, "set the mode of", name);
}

void TestFolder::makeDirectory(const QString& name)
{
    require(QDir().mkpath(path(name)), "make folder", name);
}

void TestFolder::makeFifo(const QString& name)
{
    require(mkfifo(QFile::encodeName(path(name)).constData(), 0600) == 0, "make FIFO", name);
}

void TestFolder::makeLink(const QString& name, const QString& target)
{
    require(
        symlink(QFile::encodeName(target).constData(), QFile::encodeName(path(name)).constData())
            == 0,
        "make link", name);
}

void TestFolder::rename(const QString& from, const QString& to)
{
    // QFile::rename() does not replace an existing file.
    require(
        std::rename(
            QFile::encodeName(path(from)).constData(), QFile::encodeName(path(to)).constData())
            == 0,
        "rename", from);
}

void TestFolder::remove(const QString& name)
{
    require(std::remove(QFile::encodeName(path(name)).constData()) == 0, "remove", name);
}

void TestFolder::removeTree(const QString& name)
{
    require(QDir(path(name)).removeRecursively(), "remove tree", name);
}
