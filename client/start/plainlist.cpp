// SPDX-License-Identifier: BSD-3-Clause
#include "plainlist.h"

#include "colortext.h"
#include "moodsetlisttext.h"
#include "outcome.h"
#include "output.h"
#include "text.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The options after the word "moodsets".
struct ListOptions
{
    MoodsetListing listing = MoodsetListing::Table;
    bool onlyFavorites = false;
};

std::optional<ListOptions> readOptions(int argc, char** argv)
{
    if (argc < 2 || QLatin1String(argv[1]) != QLatin1String("moodsets")) {
        return std::nullopt;
    }
    ListOptions options;
    for (int i = 2; i < argc; ++i) {
        const QLatin1String word(argv[i]);
        if (word == QLatin1String("--names")) {
            options.listing = MoodsetListing::Names;
        } else if (word == QLatin1String("--favorites")) {
            options.onlyFavorites = true;
        } else {
            return std::nullopt;
        }
    }
    return options;
}

bool hasUsualColors(const ListedMoodset& moodset)
{
    return isColorText(moodset.primaryColor) && isColorText(moodset.secondaryColor)
        && isColorText(moodset.highlightColor) && isColorText(moodset.secondaryHighlightColor);
}

} // namespace

std::optional<int> printPlainList(int argc, char** argv)
{
    const std::optional<ListOptions> options = readOptions(argc, argv);
    if (!options) {
        return std::nullopt;
    }
    QCoreApplication application(argc, argv);
    assumeUtf8();
    installTranslation(&application);
    std::optional<QVector<ListedMoodset>> moodsets = readMoodsetList();
    if (!moodsets || !std::all_of(moodsets->cbegin(), moodsets->cend(), hasUsualColors)) {
        return std::nullopt;
    }
    if (options->onlyFavorites) {
        keepFavorites(&*moodsets, [](const ListedMoodset& moodset) { return moodset.favorite; });
    }
    const QString fault = Output::writeText(moodsetListText(*moodsets, options->listing));
    Output::writeError(fault);
    return int(fault.isEmpty() ? ExitStatus::Done : ExitStatus::Failed);
}
