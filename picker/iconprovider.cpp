// SPDX-License-Identifier: BSD-3-Clause
#include "iconprovider.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

IconProvider::IconProvider()
    : QQuickImageProvider(Pixmap)
{
}

QPixmap IconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize)
{
    constexpr int usualSide = 24;
    const QString icon = id.section(QLatin1Char('/'), 0, 0);
    const QString color = id.section(QLatin1Char('/'), 1);
    QPixmap pixmap(requestedSize.isEmpty() ? QSize(usualSide, usualSide) : requestedSize);
    pixmap.fill(Qt::transparent);
    QFile file(QStringLiteral(":/icons/%1.svg").arg(icon));
    if (file.open(QIODevice::ReadOnly)) {
        QSvgRenderer renderer(file.readAll().replace("currentColor", color.toLatin1()));
        QPainter painter(&pixmap);
        renderer.render(&painter);
    }
    *size = pixmap.size();
    return pixmap;
}
