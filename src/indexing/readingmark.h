// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFile>
#include <QString>

/// A mark on the picture that is being read, which is still there after this process was killed.
///
/// A picture that ends the process each time would end it again at each start, because it stays the
/// next one to be read. So the next process counts how often in a row reading this picture has
/// ended a process. The mark is in a small file that is mapped into the memory: setting it costs no
/// system call, and needs no signal handler. The file must be in memory itself, because a write to
/// a mapped file for which a disk has no room ends the process.
class ReadingMark
{
public:
    /// The path in this user's runtime directory, which lasts as long as the user is logged in.
    /// Empty if there is no such directory.
    static QString userFile();

    /// Takes over the mark in the file at `path`. Without such a file, or if it cannot be written,
    /// nothing is known of earlier processes. An empty path stands for no file.
    explicit ReadingMark(const QString& path);
    ~ReadingMark();
    Q_DISABLE_COPY_MOVE(ReadingMark)

    /// Whether reading a picture has ended the last two processes. A process that was ended while
    /// it happened to read a picture says nothing yet.
    bool isDeadly(const QString& picture) const;

    /// Sets the mark on a picture.
    void set(const QString& picture);
    /// Takes the mark away.
    void clear();
    /// Forgets what was known of earlier processes, so that the picture is read when it changes.
    void forget();

private:
    /// The content of the file.
    struct Record
    {
        /// Stands for a picture's path; 0 if there is no mark.
        quint64 picture = 0;
        /// How many processes have ended before while they read this picture.
        quint64 ends = 0;
    };

    static quint64 keyOf(const QString& picture);
    void write(const Record& record);

    QFile m_file;
    /// The mapped file; null if there is none.
    uchar* m_content = nullptr;
    /// The picture that the process before has not survived.
    Record m_suspect;
};
