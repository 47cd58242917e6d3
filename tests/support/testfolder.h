// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QDateTime>
#include <QString>
#include <QTemporaryDir>

/// A temporary directory in which a test makes and changes entries. It is removed with the object.
///
/// Names are relative to the directory and may contain existing sub-directories. An operation that
/// fails also fails the current test.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    Q_DISABLE_COPY_MOVE(TestFolder)

    QString path() const;
    QString path(const QString& name) const;

    /// Makes or overwrites a file.
    void write(const QString& name, const QByteArray& content = "content");
    /// The same for a name that is not valid UTF-8. The test must not move the file.
    void writeRawName(const QByteArray& name, const QByteArray& content = "content");
    /// Makes a directory with a name that is not valid UTF-8. The test must not move it or put
    /// entries into it.
    void makeRawDirectory(const QByteArray& name);
    /// The path of an entry with such a name.
    QByteArray rawPath(const QByteArray& name) const;
    void setModified(const QString& name, const QDateTime& time);
    void setMode(const QString& name, unsigned int mode);
    /// Makes a directory, and the missing ones above it.
    void makeDirectory(const QString& name);
    void makeFifo(const QString& name);
    /// Makes a symbolic link that holds `target` as given.
    void makeLink(const QString& name, const QString& target);
    void rename(const QString& from, const QString& to);
    /// Removes a file, a link or an empty directory.
    void remove(const QString& name);
    /// Removes a directory with its content.
    void removeTree(const QString& name);

private:
    QTemporaryDir m_folder;
    QByteArrayList m_rawEntries;
};
