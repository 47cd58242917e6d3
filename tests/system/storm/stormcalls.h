// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "chance.h"

#include <QList>
#include <QString>
#include <QVariant>

class HttpServer;
class LibraryDatabase;
class StormFiles;

/// A call of the daemon's interface.
struct StormCall
{
    QString method;
    QVariantList arguments;
    /// Whether the interface has no such method, or none with such arguments.
    bool isMalformed = false;
};

/// What clients ask for in a storm.
class StormCalls
{
public:
    StormCalls(const StormFiles& files, const HttpServer& server, quint32 seed);

    /// Calls of all methods with good and bad arguments, to be sent in one go.
    QList<StormCall> any();
    /// Calls after which the keys of the theme have to agree with its row. What makes them differ
    /// by design is left out; see StormSession::themeFault().
    QList<StormCall> agreeing();

    /// Makes a moodset file or a picture the theme.
    static StormCall setTheme(const QString& path);

    /// The moodsets that exist, by their ids.
    void setMoodsets(const QList<qint64>& ids) { m_ids = ids; }
    /// The moodsets of StormFiles::themes(), in their order.
    void setThemes(const QList<qint64>& ids) { m_themeIds = ids; }

private:
    StormCall request();
    StormCall edit(qint64 id, bool isOfTheme);
    StormCall malformed();
    QList<StormCall> requestWithEdit();
    QString url();
    QString remoteUrl();
    qint64 id();
    QVariantMap attributes(bool isOfTheme);
    QVariant value(int depth);
    QVariant color();
    QVariantMap resources(bool isOfTheme);

    const StormFiles& m_files;
    const HttpServer& m_server;
    Chance m_chance;
    QList<qint64> m_ids;
    QList<qint64> m_themeIds;
};
