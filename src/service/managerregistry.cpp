// SPDX-License-Identifier: BSD-3-Clause
// The registry of content managers. It stands beside the wiring, above the folders whose managers
// it makes.
#include "content/contentmanager.h"
#include "content/dbmanager.h"
#include "content/downloadmanager.h"
#include "content/moodsetcontent.h"
#include "indexing/filemanager.h"
#include "indexing/imagemanager.h"

namespace {

/// A new manager of a type, or null for a number that has none.
ContentManager* makeManager(int type, QueryAgentDatabase& database)
{
    switch (type) {
    case MoodsetContent::File:
        return new FileManager(database, nullptr);
    case MoodsetContent::Image:
        return new ImageManager(database);
    case MoodsetContent::Download:
        return new DownloadManager(database);
    default:
        return nullptr;
    }
}

} // namespace

ContentManager* ContentManager::managerFromType(int type)
{
    DbManager* const database = DbManager::instance();
    const auto key = static_cast<MoodsetContent::Type>(type);
    ContentManager* const known = database->manager(key);
    if (known) {
        return known;
    }
    // A manager's constructor may ask for others, so the entry is looked up anew.
    ContentManager* const made = makeManager(type, *database);
    database->manager(key) = made;
    return made;
}

QList<ContentManager*> ContentManager::scannerManagers()
{
    return {managerFromType(MoodsetContent::Image)};
}
