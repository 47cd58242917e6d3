// SPDX-License-Identifier: BSD-3-Clause
#include "managerfactory.h"

#include "content/downloadmanager.h"
#include "content/moodsetcontent.h"
#include "indexing/filemanager.h"
#include "indexing/imagemanager.h"
#include "indexing/indexmanager.h"
#include "installmanager.h"
#include "moodsetmanager.h"

ContentManager* makeManager(int type, QueryAgentDatabase& database)
{
    switch (type) {
    case MoodsetContent::File:
        return new FileManager(database, nullptr);
    case MoodsetContent::Moodset:
        return new MoodsetManager(database, nullptr);
    case MoodsetContent::Image:
        return new ImageManager(database);
    case MoodsetContent::Download:
        return new DownloadManager(database);
    case MoodsetContent::Install:
        return new InstallManager(database, nullptr);
    case MoodsetContent::Index:
        return new IndexManager(database);
    default:
        return nullptr;
    }
}
