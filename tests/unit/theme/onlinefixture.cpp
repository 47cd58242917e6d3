// SPDX-License-Identifier: BSD-3-Clause
#include "onlinefixture.h"

#include "encodedpicture.h"
#include "failunless.h"

#include <QDir>
#include <QImage>
#include <QTest>

OnlineFixture::OnlineFixture(HttpServer::Transport transport)
    : server(transport)
{
    server.answer(path, picture());
}

QByteArray OnlineFixture::picture(const char* format)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    return encodedPicture(image, format);
}

void OnlineFixture::setSlowly(const QString& place)
{
    server.answer(place, picture());
    server.hold(place);
    set(server.url(place));
    failUnless(QTest::qWaitFor([&] { return server.isHolding(place); }), "Nobody asked for it");
}

void OnlineFixture::download(const QString& place)
{
    server.answer(place, picture());
    create(server.url(place));
    waitForCreated();
}

QStringList OnlineFixture::savedPictures() const
{
    return QDir(onlinePicture(QString())).entryList(QDir::Files, QDir::Name);
}

QString OnlineFixture::origin(const QString& picture) const
{
    return library
        .value(QStringLiteral("SELECT source FROM download WHERE fileId = ?"), {fileId(picture)})
        .toString();
}

QStringList OnlineFixture::keysOfDownload(const QString& picture) const
{
    return keysOf(picture, QString()) + partnerSpaceKeys();
}
