// SPDX-License-Identifier: BSD-3-Clause
#include "gnomeadapter.h"

#include "filecontent.h"
#include "storetexts.h"

#include <dconfstore.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

const QString PictureUri = QStringLiteral("/org/gnome/desktop/background/picture-uri");
const QString PictureUriDark = QStringLiteral("/org/gnome/desktop/background/picture-uri-dark");
const QString PictureOptions = QStringLiteral("/org/gnome/desktop/background/picture-options");
const QString LockPictureUri = QStringLiteral("/org/gnome/desktop/screensaver/picture-uri");
const QString AccentKey = QStringLiteral("/org/gnome/desktop/interface/accent-color");

struct Accent
{
    const char* name;
    Argb color;
};

/// The colours that the desktop itself uses for these names, except for slate.
constexpr std::array<Accent, 8> Accents{{
    {"blue", {255, 0x35, 0x84, 0xe4}},
    {"teal", {255, 0x21, 0x90, 0xa4}},
    {"green", {255, 0x3a, 0x94, 0x4a}},
    {"yellow", {255, 0xc8, 0x88, 0x00}},
    {"orange", {255, 0xed, 0x5b, 0x00}},
    {"red", {255, 0xe6, 0x2d, 0x42}},
    {"pink", {255, 0xd5, 0x61, 0x99}},
    {"purple", {255, 0x91, 0x41, 0xac}},
}};

constexpr double FullTurn = 360;

int chroma(const Argb& color)
{
    const auto [least, most] = std::minmax({color.red, color.green, color.blue});
    return most - least;
}

/// The hue in degrees. The colour must have a chroma.
double hue(const Argb& color)
{
    constexpr double sector = 60;
    const double width = chroma(color);
    double sectors = 0;
    if (color.red >= color.green && color.red >= color.blue) {
        sectors = (color.green - color.blue) / width;
    } else if (color.green >= color.blue) {
        sectors = 2 + (color.blue - color.red) / width;
    } else {
        sectors = 4 + (color.red - color.green) / width;
    }
    return std::fmod(sector * sectors + FullTurn, FullTurn);
}

double hueDistance(const Argb& one, const Argb& other)
{
    const double distance = std::abs(hue(one) - hue(other));
    return std::min(distance, FullTurn - distance);
}

} // namespace

QString nearestAccent(const Argb& color)
{
    // Below a tenth of the range, a colour looks grey beside the other accents.
    constexpr int leastChroma = 26;
    if (chroma(color) < leastChroma) {
        return QStringLiteral("slate");
    }
    const auto* const nearest = std::min_element(
        Accents.begin(), Accents.end(), [&color](const Accent& one, const Accent& other) {
            return hueDistance(color, one.color) < hueDistance(color, other.color);
        });
    return QLatin1String(nearest->name);
}

GnomeAdapter::GnomeAdapter(const QString& pictures, QObject* parent)
    : Adapter(parent)
    , m_pictures(pictures)
    , m_shells(
          {QStringLiteral("org.gnome.Shell"), QStringLiteral("mobi.phosh.Shell.Portal"),
           QStringLiteral("sm.puri.Phosh.Portal")})
{
}

QString GnomeAdapter::name() const
{
    return QStringLiteral("gnome");
}

void GnomeAdapter::detect()
{
    connect(&m_shells, &BusPresence::changed, this, [this] { setPresent(m_shells.isPresent()); });
    // The store also announces values that it could not keep.
    connect(&DconfStore::instance(), &DconfStore::changed, this, [this](const QByteArray& path) {
        if (path.startsWith("/org/gnome/desktop/")) {
            Q_EMIT doubted();
        }
    });
    m_shells.follow();
}

QJsonObject GnomeAdapter::plan(const Appearance& appearance) const
{
    QJsonObject plan;
    if (!appearance.look.wallpaper.isEmpty()) {
        const QString uri = fileUri(appearance.look.wallpaper);
        plan.insert(PictureUri, uri);
        plan.insert(PictureUriDark, uri);
        plan.insert(PictureOptions, QStringLiteral("zoom"));
        plan.insert(LockPictureUri, uri);
    }
    if (appearance.look.highlight) {
        plan.insert(AccentKey, nearestAccent(*appearance.look.highlight));
    }
    return plan;
}

QString GnomeAdapter::shortfall(const Appearance& appearance) const
{
    return appearance.look.problem;
}

void GnomeAdapter::save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
{
    done(StoreTexts::saveUserValues(plan, record, fileUri(m_pictures)), {});
}

void GnomeAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    Q_UNUSED(appearance)
    done(StoreTexts::write(plan));
}

void GnomeAdapter::verify(const QJsonObject& plan, const Done& done)
{
    done(StoreTexts::difference(plan));
}

void GnomeAdapter::restore(const AdapterRecord& record, const Done& done)
{
    done(StoreTexts::restore(record));
}
