// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QQuickImageProvider>

/// Paints the icons of the program in any colour and size, for URLs such as
/// "image://icon/star/#ff8800".
class IconProvider : public QQuickImageProvider
{
public:
    static QString name() { return QStringLiteral("icon"); }

    IconProvider();

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};
