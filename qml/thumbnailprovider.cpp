// SPDX-License-Identifier: BSD-3-Clause
#include "thumbnailprovider.h"

#include "thumbnail.h"

#include <QMutex>
#include <QThread>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace {

/// The number of threads. Decoders take memory, and other programs need processors, too.
constexpr int MostThreads = 3;

QString pathFrom(const QString& id)
{
    return QUrl(id.left(id.lastIndexOf(QLatin1String("?v=")))).toLocalFile();
}

class ThumbnailResponse;

/// Connects the work with its response. An engine that ends may destroy the response before the
/// work is done.
struct ResponseLink
{
    QMutex mutex;
    ThumbnailResponse* response = nullptr;
};

class ThumbnailResponse final : public QQuickImageResponse
{
public:
    ThumbnailResponse(ThumbnailQueue* queue, const QString& path, const QSize& size)
        : m_queue(queue)
        , m_link(std::make_shared<ResponseLink>())
    {
        m_link->response = this;
        m_ticket = queue->add([link = m_link, path, size] {
            const QImage image = path.isEmpty() ? QImage() : thumbnail(path, size);
            const QMutexLocker locker(&link->mutex);
            if (link->response != nullptr) {
                link->response->take(image);
            }
        });
    }

    ~ThumbnailResponse() override
    {
        const QMutexLocker locker(&m_link->mutex);
        m_link->response = nullptr;
    }
    Q_DISABLE_COPY_MOVE(ThumbnailResponse)

    QQuickTextureFactory* textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    QString errorString() const override { return m_error; }

    void cancel() override
    {
        if (m_queue->remove(m_ticket)) {
            Q_EMIT finished();
        }
    }

private:
    void take(const QImage& image)
    {
        m_image = image;
        if (image.isNull()) {
            m_error = QStringLiteral("no picture that can be read");
        }
        Q_EMIT finished();
    }

    ThumbnailQueue* const m_queue;
    const std::shared_ptr<ResponseLink> m_link;
    ThumbnailQueue::Ticket m_ticket = 0;
    QImage m_image;
    QString m_error;
};

} // namespace

ThumbnailProvider::ThumbnailProvider()
    : m_queue(std::clamp(QThread::idealThreadCount() - 1, 1, MostThreads))
{
}

QQuickImageResponse* ThumbnailProvider::requestImageResponse(
    const QString& id, const QSize& requestedSize)
{
    return new ThumbnailResponse(&m_queue, pathFrom(id), requestedSize);
}
