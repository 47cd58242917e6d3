// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A real sway with one output that no screen shows. It ends when the object is destroyed.
///
/// sway does not run as root, so it runs in a name space in which it is another user.
class HeadlessSway
{
public:
    static constexpr int Width = 72;
    static constexpr int Height = 144;

    HeadlessSway() = default;
    ~HeadlessSway();
    Q_DISABLE_COPY_MOVE(HeadlessSway)

    /// The names of the programs that it needs.
    static QStringList programs();

    /// Starts it, and waits until programs can connect. `lines` are further lines of its
    /// configuration.
    Q_REQUIRED_RESULT bool start(const QByteArray& lines = {});
    void kill();
    /// Makes it read its configuration again.
    Q_REQUIRED_RESULT bool reload();

    /// The colour in the middle of the output; invalid if there is no picture of the output.
    QColor middle() const;
    /// The name of its display among the sockets of the runtime directory.
    QString display() const { return m_display; }

private:
    QString socket() const;

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_display;
};

/// Whether two colours are similar, after lossy compression.
bool isClose(const QColor& one, const QColor& other);
