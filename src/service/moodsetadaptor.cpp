// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetadaptor.h"

#include "albumgallery.h"

#include <QMetaObject>

MoodsetAdaptor::MoodsetAdaptor(AlbumGallery* parent)
    : QDBusAbstractAdaptor(parent)
{
    setAutoRelaySignals(true);
}

void MoodsetAdaptor::createMoodset(const QString& url)
{
    QMetaObject::invokeMethod(parent(), "createMoodset", Q_ARG(QString, url));
}

void MoodsetAdaptor::indexFile(const QString& url)
{
    QMetaObject::invokeMethod(parent(), "indexFile", Q_ARG(QString, url));
}

void MoodsetAdaptor::installPackage(const QString& path)
{
    QMetaObject::invokeMethod(parent(), "installPackage", Q_ARG(QString, path));
}

void MoodsetAdaptor::refreshMoodsets()
{
    QMetaObject::invokeMethod(parent(), "refreshMoodsets");
}

void MoodsetAdaptor::remove(int contentType, qlonglong contentId)
{
    QMetaObject::invokeMethod(
        parent(), "remove", Q_ARG(int, contentType), Q_ARG(qlonglong, contentId));
}

void MoodsetAdaptor::saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args)
{
    QMetaObject::invokeMethod(
        parent(), "saveAttributes", Q_ARG(int, contentType), Q_ARG(qlonglong, contentId),
        Q_ARG(QVariantMap, args));
}

void MoodsetAdaptor::setMoodset(const QString& url)
{
    QMetaObject::invokeMethod(parent(), "setMoodset", Q_ARG(QString, url));
}
