// SPDX-License-Identifier: BSD-3-Clause
#include "tones.h"

const QStringList& Tones::names()
{
    static const QStringList names{
        QStringLiteral("ringerTone"),    QStringLiteral("messageTone"),
        QStringLiteral("mailTone"),      QStringLiteral("internetCallTone"),
        QStringLiteral("chatTone"),      QStringLiteral("calendarTone"),
        QStringLiteral("clockAlarmTone")};
    return names;
}

QString Tones::fileKey(const QString& name)
{
    return name + QStringLiteral("File");
}

QString Tones::enabledKey(const QString& name)
{
    return name + QStringLiteral("Enabled");
}

const QStringList& Tones::profileKeys()
{
    static const QStringList keys{
        QStringLiteral("ringing.alert.tone"), QStringLiteral("sms.alert.tone"),
        QStringLiteral("email.alert.tone"),   QStringLiteral("voip.alert.tone"),
        QStringLiteral("im.alert.tone"),      QStringLiteral("calendar.alert.tone"),
        QStringLiteral("clock.alert.tone")};
    return keys;
}

int Tones::withTone(int mask, int index, bool isEnabled)
{
    return isEnabled ? mask | (1 << index) : mask & ~(1 << index);
}
