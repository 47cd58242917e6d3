// SPDX-License-Identifier: BSD-3-Clause
#include "plugin.h"

#include "actions.h"
#include "filemodel.h"
#include "moodsetitem.h"
#include "moodsetmodel.h"
#include "photomodel.h"
#include "theme.h"
#include "theme/profilemanager.h"
#include "thumbnailprovider.h"

#include <QQmlEngine>

void MoodsetPlugin::registerTypes(const char* uri)
{
    Q_ASSERT(qstrcmp(uri, "Moodset") == 0);
    qmlRegisterUncreatableType<ContentModel>(
        uri, 1, 0, "ContentModel",
        QStringLiteral("ContentModel is what the models have in common"));
    qmlRegisterType<MoodsetModel>(uri, 1, 0, "MoodsetModel");
    qmlRegisterType<PhotoModel>(uri, 1, 0, "PhotoModel");
    qmlRegisterType<FileModel>(uri, 1, 0, "FileModel");
    qmlRegisterType<MoodsetItem>(uri, 1, 0, "MoodsetItem");
    qmlRegisterType<ProfileManager>(uri, 1, 0, "ProfileManager");
    qmlRegisterSingletonType<Theme>(
        uri, 1, 0, "Theme",
        [](QQmlEngine* /*engine*/, QJSEngine* /*scripts*/) -> QObject* { return new Theme; });
    qmlRegisterSingletonType<Actions>(
        uri, 1, 0, "Actions", [](QQmlEngine* /*engine*/, QJSEngine* scripts) -> QObject* {
            return new Actions(scripts);
        });
}

void MoodsetPlugin::initializeEngine(QQmlEngine* engine, const char* uri)
{
    Q_UNUSED(uri)
    engine->addImageProvider(ThumbnailProvider::name(), new ThumbnailProvider);
}
