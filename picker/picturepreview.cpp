// SPDX-License-Identifier: BSD-3-Clause
#include "picturepreview.h"

#include "lookhelper.h"

#include <QColor>
#include <QThreadPool>
#include <QUuid>
#include <QtConcurrentRun>

namespace {

QVariant colorIn(const QJsonObject& colors, const char* name)
{
    const QColor color(colors.value(QLatin1String(name)).toString());
    return color.isValid() ? QVariant(color) : QVariant();
}

/// Inspections wait for the network. In Qt's own pool, they would keep the interface waiting, too,
/// because Qt converts images there.
QThreadPool* inspectors()
{
    static QThreadPool pool;
    constexpr int most = 4;
    pool.setMaxThreadCount(most);
    return &pool;
}

} // namespace

PicturePreview::PicturePreview(QObject* parent)
    : QObject(parent)
{
    connect(&m_inspection, &QFutureWatcherBase::finished, this, &PicturePreview::take);
}

// The inspection does not use this object, and ends by itself.
PicturePreview::~PicturePreview() = default;

void PicturePreview::setPicture(const QUrl& picture)
{
    if (picture == m_picture) {
        return;
    }
    m_picture = picture;
    m_look.clear();
    m_error.clear();
    m_status = picture.isEmpty() ? Null : Loading;
    if (m_status == Loading) {
        m_inspection.setFuture(
            QtConcurrent::run(inspectors(), &PicturePreview::inspect, picture, m_folder.path()));
    }
    Q_EMIT changed();
}

PicturePreview::Reply PicturePreview::inspect(const QUrl& picture, const QString& folder)
{
    return picture.isLocalFile() ? inspectFile(picture, folder) : inspectAddress(picture);
}

PicturePreview::Reply PicturePreview::inspectFile(const QUrl& picture, const QString& folder)
{
    const QString path = picture.toLocalFile();
    // Each picture gets a different name, because images are cached by their URL.
    const QString base = folder + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::Id128);
    const QString home = base + QStringLiteral("-home.png");
    const QString application = base + QStringLiteral("-application.png");
    const QJsonObject reply = LookHelper::ask(
        {{QStringLiteral("do"), QStringLiteral("colors")},
         {QStringLiteral("path"), path},
         {QStringLiteral("homeOutput"), home},
         {QStringLiteral("applicationOutput"), application}});
    if (!reply.value(QLatin1String("fault")).toString().isEmpty()) {
        const QString fault = pictureFault(path);
        return {{}, fault.isEmpty() ? tr("the picture cannot be read") : fault};
    }
    const QJsonObject colors = reply.value(QLatin1String("colors")).toObject();
    return {
        {{QStringLiteral("homeWallpaper"), QUrl::fromLocalFile(home)},
         {QStringLiteral("applicationWallpaper"), QUrl::fromLocalFile(application)},
         {QStringLiteral("primaryColor"), colorIn(colors, "primary")},
         {QStringLiteral("secondaryColor"), colorIn(colors, "secondary")},
         {QStringLiteral("highlightColor"), colorIn(colors, "highlight")},
         {QStringLiteral("secondaryHighlightColor"), colorIn(colors, "secondaryHighlight")}},
        {}};
}

PicturePreview::Reply PicturePreview::inspectAddress(const QUrl& address)
{
    constexpr int timeoutMs = 15000;
    return {
        {},
        addressFault(LookHelper::ask(
            {{QStringLiteral("do"), QStringLiteral("probe")},
             {QStringLiteral("url"), address.toString()},
             {QStringLiteral("timeoutMs"), timeoutMs}}))};
}

void PicturePreview::take()
{
    const Reply reply = m_inspection.result();
    m_look = reply.look;
    m_error = reply.error;
    m_status = m_error.isEmpty() ? Ready : Error;
    Q_EMIT changed();
}
