// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "thumbnailqueue.h"

#include <QQuickAsyncImageProvider>

/// Gives small pictures of local files, under URLs such as
/// "image://moodset-thumbnail/file:///home/u/a.jpg?v=1f", which the models have as `thumbnail`.
///
/// What was asked for last comes first, as that has come into view last. What nobody wants any more
/// is taken out of the queue.
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
