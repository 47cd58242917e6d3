// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "themesession.h"

#include <QObject>
#include <QQmlError>
#include <QUrl>
#include <QVariantMap>

#include <memory>

class HttpServer;

/// The user, the daemon and the files of the tests of the QML module, as "machine" in QML. All
/// functions but those that give a value return whether they have succeeded.
class QmlMachine : public QObject
{
    Q_OBJECT

public:
    QmlMachine();
    ~QmlMachine() override;

    Q_INVOKABLE bool start() { return m_session.startAtRest(); }
    Q_INVOKABLE bool stop() { return m_session.daemon.terminate(); }
    Q_INVOKABLE bool kill() { return m_session.daemon.kill(); }
    Q_INVOKABLE bool pause() { return m_session.daemon.pause(); }
    Q_INVOKABLE void resume() { m_session.daemon.resume(); }
    Q_INVOKABLE bool waitUntilComplete() { return m_session.waitUntilComplete(); }
    Q_INVOKABLE QStringList takeWarnings() { return m_session.daemon.takeWarnings(); }

    Q_INVOKABLE QString path(const QString& name) const { return m_session.folders.picture(name); }
    Q_INVOKABLE QUrl url(const QString& name) const { return QUrl::fromLocalFile(path(name)); }
    Q_INVOKABLE QUrl fileUrl(const QString& path) const { return QUrl::fromLocalFile(path); }

    /// Writes a picture of 8 x 6 pixels in one colour to the pictures folder, and replaces any file
    /// there.
    Q_INVOKABLE bool writePicture(
        const QString& name, const QString& color = QStringLiteral("red"));
    /// A picture with a time, such as "2020:01:02 03:04:05".
    Q_INVOKABLE bool writePhoto(const QString& name, const QString& time);
    Q_INVOKABLE bool writeFile(const QString& name, const QString& content);
    Q_INVOKABLE bool removeFile(const QString& name) const;

    /// A bundle in the install directory; gives the URL of its moodset file, empty on failure.
    Q_INVOKABLE QUrl writeBundle(const QString& name, const QString& content);
    /// The same in the folder for what no daemon watches; gives the folder's path.
    Q_INVOKABLE QString writeOwnBundle(const QString& name, const QString& content);

    /// As clients on the bus do.
    Q_INVOKABLE bool setMoodset(const QUrl& url) { return ThemeSession::set(url); }
    Q_INVOKABLE bool createMoodset(const QString& name) { return ThemeSession::create(path(name)); }
    Q_INVOKABLE bool edit(const QUrl& url, const QVariantMap& values)
    {
        return m_session.edit(url.toLocalFile(), values);
    }

    /// What another process reads in the store.
    Q_INVOKABLE QString storedValue(const QString& key) const { return UserStore::value(key); }

    /// Takes the library away, which a daemon that starts then makes again.
    Q_INVOKABLE bool removeLibrary() const;

    /// The address of a picture that a web server gives; `isThere` says whether it is there.
    Q_INVOKABLE QUrl address(bool isThere);

    /// The examples of the module's page, each under the heading that it stands below.
    Q_INVOKABLE QVariantList examples() const;

    /// What the engine has warned of since the last time.
    Q_INVOKABLE QStringList takeQmlWarnings();
    void noteQmlWarnings(const QList<QQmlError>& warnings);

    /// The number of threads of the process with this name.
    Q_INVOKABLE int threads(const QString& name) const;

private:
    ThemeSession m_session;
    std::unique_ptr<HttpServer> m_server;
    QStringList m_qmlWarnings;
};
