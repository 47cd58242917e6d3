// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QDateTime>
#include <QString>
#include <QTemporaryDir>

/// A temporary folder in which a test makes and changes entries; it goes with the object.
///
/// Names are relative to the folder and may lead into sub-folders that exist. An operation that
/// does not succeed fails the current test.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    Q_DISABLE_COPY_MOVE(TestFolder)

    [[nodiscard]] QString path() const;
    [[nodiscard]] QString path(const QString& name) const;

    /// Makes or overwrites a file.
    void write(const QString& name, const QByteArray& content = "content");
    /// The same for a name that is not valid UTF-8; the file is to stay where it is.
    void writeRawName(const QByteArray& name, const QByteArray& content = "content");
    void setModified(const QString& name, const QDateTime& time);
    void setMode(const QString& name, unsigned int mode);
    /// Makes a folder, and those above it where they are missing.
    void makeDirectory(const QString& name);
    void makeFifo(const QString& name);
    /// Makes a symbolic link that holds `target` as given.
    void makeLink(const QString& name, const QString& target);
    void rename(const QString& from, const QString& to);
    /// Removes a file, a link or an empty folder.
    void remove(const QString& name);
    /// Removes a folder with all that it holds.
    void removeTree(const QString& name);

private:
    QTemporaryDir m_folder;
    QByteArrayList m_rawFiles;
};
