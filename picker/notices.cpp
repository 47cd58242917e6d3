// SPDX-License-Identifier: BSD-3-Clause
#include "notices.h"

#include "actions.h"

#include <moodsetnames.h>

namespace {

QString nameIn(const QVariantMap& outcome)
{
    constexpr int longest = 60;
    const QString name = outcome.value(QStringLiteral("moodset"))
                             .toMap()
                             .value(QStringLiteral("name"))
                             .toString()
                             .simplified();
    return name.size() > longest ? name.left(longest - 1) + QChar(0x2026) : name;
}

QString success(const QVariantMap& outcome)
{
    namespace Bus = MoodsetNames::Bus;
    const QString method = outcome.value(QStringLiteral("method")).toString();
    const QString name = nameIn(outcome);
    if (method == Bus::SetMoodset) {
        return Notices::tr("“%1” is active.").arg(name);
    }
    if (method == Bus::CreateMoodset) {
        return Notices::tr("“%1” is one of your moodsets now.").arg(name);
    }
    if (method == Bus::Remove) {
        return Notices::tr("“%1” has been removed.").arg(name);
    }
    if (method == Bus::SaveAttributes) {
        return Notices::tr("“%1” has been changed.").arg(name);
    }
    return {};
}

QString failure(const QVariantMap& outcome)
{
    switch (Actions::Error(outcome.value(QStringLiteral("error")).toInt())) {
    case Actions::NoDaemon:
        return Notices::tr("The theme service does not answer. Nothing has been changed.");
    case Actions::Gone:
        return Notices::tr("This moodset does not exist any more.");
    case Actions::TimedOut:
        return Notices::tr("The picture has not come within the time. It may still come later.");
    case Actions::Cancelled:
        return {};
    case Actions::NoError:
    case Actions::InvalidArgument:
    case Actions::NotDone:
        break;
    }
    return Notices::tr("This did not work: %1")
        .arg(outcome.value(QStringLiteral("errorText")).toString());
}

} // namespace

Notices::Notices(QObject* parent)
    : QObject(parent)
{
    m_end.setSingleShot(true);
    m_end.setInterval(ShowTime);
    connect(&m_end, &QTimer::timeout, this, &Notices::clear);
}

void Notices::begin(int call, const QString& subject)
{
    m_calls.insert(call, subject);
    Q_EMIT busyChanged();
}

void Notices::finish(int call, const QVariantMap& outcome)
{
    if (m_calls.remove(call) > 0) {
        Q_EMIT busyChanged();
    }
    const bool isSuccess = outcome.value(QStringLiteral("succeeded")).toBool();
    const QString text = isSuccess ? success(outcome) : failure(outcome);
    if (!text.isEmpty()) {
        set(text, !isSuccess, isSuccess ? outcome.value(QStringLiteral("undo")) : QVariant());
    }
}

void Notices::show(const QString& text, bool isError)
{
    set(text, isError, {});
}

void Notices::clear()
{
    m_end.stop();
    set({}, false, {});
}

void Notices::set(const QString& text, bool isError, const QVariant& undo)
{
    m_text = text;
    m_isError = isError;
    m_undo = undo;
    if (!text.isEmpty()) {
        m_end.start();
    }
    Q_EMIT noticeChanged();
}
