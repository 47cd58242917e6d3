// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "thumbnailqueue.h"

#include <QQuickAsyncImageProvider>

/// Makes thumbnails of local files, for URLs such as
/// "image://moodset-thumbnail/file:///home/u/a.jpg?v=1f". The models have these URLs in the role
/// `thumbnail`.
///
/// The last request comes first, because its item has come into view last. Requests for items that
/// have left the view are removed from the queue.
class ThumbnailProvider : public QQuickAsyncImageProvider
{
public:
    static QString name() { return QStringLiteral("moodset-thumbnail"); }

    ThumbnailProvider();

    QQuickImageResponse* requestImageResponse(
        const QString& id, const QSize& requestedSize) override;

private:
    ThumbnailQueue m_queue;
};
