// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetadaptor.h"

#include "albumgallery.h"

#include <mgconfitem.h>

#include <QMetaObject>

namespace {

/// Calls the service object for a client. The reply is sent when the adaptor's slot returns. By
/// then, the keys are stored as safely as the database is.
template <typename... Arguments>
void forward(QObject* gallery, const char* slot, Arguments... arguments)
{
    QMetaObject::invokeMethod(gallery, slot, arguments...);
    MGConfItem::sync();
}

} // namespace

MoodsetAdaptor::MoodsetAdaptor(AlbumGallery* parent)
    : QDBusAbstractAdaptor(parent)
{
    setAutoRelaySignals(true);
}

void MoodsetAdaptor::createMoodset(const QString& url)
{
    forward(parent(), "createMoodset", Q_ARG(QString, url));
}

void MoodsetAdaptor::indexFile(const QString& url)
{
    forward(parent(), "indexFile", Q_ARG(QString, url));
}

void MoodsetAdaptor::installPackage(const QString& path)
{
    forward(parent(), "installPackage", Q_ARG(QString, path));
}

void MoodsetAdaptor::refreshMoodsets()
{
    forward(parent(), "refreshMoodsets");
}

void MoodsetAdaptor::remove(int contentType, qlonglong contentId)
{
    forward(parent(), "remove", Q_ARG(int, contentType), Q_ARG(qlonglong, contentId));
}

void MoodsetAdaptor::saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args)
{
    forward(
        parent(), "saveAttributes", Q_ARG(int, contentType), Q_ARG(qlonglong, contentId),
        Q_ARG(QVariantMap, args));
}

void MoodsetAdaptor::setMoodset(const QString& url)
{
    forward(parent(), "setMoodset", Q_ARG(QString, url));
}
