// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "httpserver.h"
#include "themefixture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

/// A theme, and a server that has a picture.
struct OnlineFixture : ThemeFixture
{
    explicit OnlineFixture(HttpServer::Transport transport = HttpServer::Transport::Plain);

    /// A picture of 40 x 30 pixels, as a server sends it.
    static QByteArray picture(const char* format = "png");

    /// Asks for a picture at a place of the server, which sends its first half and then waits.
    void setSlowly(const QString& place);
    /// Creates the moodset of a picture at a place of the server.
    void download(const QString& place);

    /// The names in the pictures folder.
    QStringList savedPictures() const;
    /// The URL that the library has for a saved picture.
    QString origin(const QString& picture) const;
    /// What takeKeys() gives when a saved picture was applied.
    QStringList keysOfDownload(const QString& picture) const;

    HttpServer server;
    /// Where the server's picture is.
    const QString path = QStringLiteral("/a.png");
    const QUrl url = server.url(path);
    /// Where the picture that is downloaded first is saved.
    const QString saved = onlinePicture(QStringLiteral("online_img0.jpg"));
};
