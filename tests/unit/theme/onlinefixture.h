// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "httpserver.h"
#include "themefixture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

/// A theme, and a web server with a picture.
struct OnlineFixture : ThemeFixture
{
    explicit OnlineFixture(HttpServer::Transport transport = HttpServer::Transport::Plain);

    /// A picture of 40 x 30 pixels, in the form in which a server sends it.
    static QByteArray picture(const char* format = "png");

    /// Applies a picture at a path of the server, which sends the first half and then waits.
    void setSlowly(const QString& place);
    /// Makes the moodset of a picture at a path of the server.
    void download(const QString& place);

    /// The names in the pictures folder.
    QStringList savedPictures() const;
    /// The URL that the library has recorded for a saved picture.
    QString origin(const QString& picture) const;
    /// The result of takeKeys() after a saved picture was applied.
    QStringList keysOfDownload(const QString& picture) const;

    HttpServer server;
    /// The URL of the server's picture.
    const QString path = QStringLiteral("/a.png");
    const QUrl url = server.url(path);
    /// The path under which the first download is saved.
    const QString saved = onlinePicture(QStringLiteral("online_img0.jpg"));
};
