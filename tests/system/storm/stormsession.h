// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "chance.h"
#include "httpserver.h"
#include "stormcalls.h"
#include "stormfiles.h"
#include "themesession.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class StormClient;

/// A daemon in a storm: eight clients call all its methods at random and wait for no reply, files
/// and bundles come, change and go, pictures are downloaded, and other programs write its keys.
///
/// The functions that give a fault give an empty text if all is well.
class StormSession : public ThemeSession
{
public:
    explicit StormSession(quint32 seed);
    ~StormSession();
    Q_DISABLE_COPY_MOVE(StormSession)

    /// Starts the daemon with the files that stay all the time.
    Q_REQUIRED_RESULT bool start();
    /// Ends the daemon and starts it again, which brings what it need not follow while it runs.
    Q_REQUIRED_RESULT bool restart();

    /// Storms for a while, then waits for all replies. The fault is the daemon's end, or a reply
    /// that did not come or was none.
    QString storm(int milliseconds);
    /// The same, but with nothing that makes rows, files and keys differ by design.
    QString stormInOrder(int milliseconds);

    /// Waits until the rows of the pictures folder are those of its files, all files are read, and
    /// all is announced. The fault is what differs after the deadline.
    ///
    /// After storm(), a restart must come first. The daemon does not follow a folder that comes
    /// from elsewhere, and loses the changes of a moment in which a file appears that has a row: in
    /// the place of another, in a new folder that is just being scanned, by a download, or since it
    /// was asked for before it was noticed. Some rows outlive even a restart, so that no storm
    /// brings them: see StormFiles.
    QString libraryFault();

    /// Whether the colours in the store are those of the moodset that the source key names. The
    /// fault is what differs.
    ///
    /// Only after stormInOrder(). They may differ by design when the source key
    /// - is empty, since the theme was downloaded, or names another file than the theme's, since a
    ///   download that was overtaken came last;
    /// - names no moodset, since that was removed, its file is gone or renamed, or it was asked for
    ///   by another spelling of its path;
    /// - was written by another program, as the colours may be, which then has to write them all;
    /// or when the moodset's row was made or written again without being asked for as the theme: by
    /// createMoodset after its removal or for lack of a colour, or by a download that took the
    /// place of its picture.
    QString themeFault();

    /// Takes all warnings so far. The fault is those that no storm is to bring.
    QString takeUnexpectedWarnings();

    /// What has happened so far.
    QString summary() const;

private:
    QString storm(int milliseconds, const std::function<void()>& turn);
    void turn();
    void turnInOrder();
    void sendCalls(const std::function<QList<StormCall>(StormCalls*)>& make);
    void readIds();
    void writeKey();
    QString fault();

    HttpServer m_server;
    StormFiles m_files;
    Chance m_chance;
    std::vector<StormCalls> m_calls;
    std::vector<std::unique_ptr<StormClient>> m_clients;
    int m_turns = 0;
    int m_warnings = 0;
};
