// SPDX-License-Identifier: BSD-3-Clause
#include "feedbackadapter.h"

#include "soundtheme.h"
#include "storetexts.h"

namespace {

const QString SoundThemeKey = QStringLiteral("/org/gnome/desktop/sound/theme-name");
const QString FeedbackThemeKey = QStringLiteral("/org/sigxcpu/feedbackd/theme");
const QString ProfileKey = QStringLiteral("/org/sigxcpu/feedbackd/profile");
const QString ThemeName = QStringLiteral("moodset");

} // namespace

FeedbackAdapter::FeedbackAdapter(bool keepsSilent, QObject* parent)
    : Adapter(parent)
    , m_keepsSilent(keepsSilent)
    , m_service({QStringLiteral("org.sigxcpu.Feedback")})
{
}

QString FeedbackAdapter::name() const
{
    return QStringLiteral("feedbackd");
}

void FeedbackAdapter::detect()
{
    connect(&m_service, &BusPresence::changed, this, [this] { setPresent(m_service.isPresent()); });
    m_service.follow();
}

QJsonObject FeedbackAdapter::plan(const Appearance& appearance) const
{
    QJsonObject plan = SoundTheme::plan(appearance.sound);
    plan.insert(SoundThemeKey, ThemeName);
    plan.insert(FeedbackThemeKey, ThemeName);
    const bool isSilent = appearance.sound.profile == QLatin1String("silent");
    const QString silent = m_keepsSilent ? QStringLiteral("silent") : QStringLiteral("quiet");
    plan.insert(ProfileKey, isSilent ? silent : QStringLiteral("full"));
    return plan;
}

QString FeedbackAdapter::shortfall(const Appearance& appearance) const
{
    return SoundTheme::shortfall(appearance.sound);
}

void FeedbackAdapter::save(
    const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
{
    done(StoreTexts::saveUserValues(plan, record, ThemeName), {});
}

// The themes are written first, so that the service finds them when it reads their names.
void FeedbackAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    Q_UNUSED(appearance)
    const QString failure = SoundTheme::write(plan);
    done(failure.isEmpty() ? StoreTexts::write(plan) : failure);
}

void FeedbackAdapter::verify(const QJsonObject& plan, const Done& done)
{
    const QString difference = SoundTheme::difference(plan);
    done(difference.isEmpty() ? StoreTexts::difference(plan) : difference);
}

void FeedbackAdapter::restore(const AdapterRecord& record, const Done& done)
{
    const QString failure = StoreTexts::restore(record);
    if (failure.isEmpty() && !record.set.isEmpty()) {
        SoundTheme::remove();
    }
    done(failure);
}
