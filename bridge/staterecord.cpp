// SPDX-License-Identifier: BSD-3-Clause
#include "staterecord.h"

#include "filecontent.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>

#include <utility>

namespace {

constexpr qint64 LargestRecord = qint64(16) * 1024 * 1024;

AdapterState stateFromJson(const QJsonObject& object)
{
    AdapterState state;
    state.record.saved = object.value(QLatin1String("saved")).toObject();
    state.record.set = object.value(QLatin1String("set")).toObject();
    state.record.earlier = object.value(QLatin1String("earlier")).toObject();
    state.setting = object.value(QLatin1String("enabled")).toString();
    state.isPresent = object.value(QLatin1String("present")).toBool();
    state.time = object.value(QLatin1String("time")).toString();
    state.failure = object.value(QLatin1String("failure")).toString();
    return state;
}

QJsonObject toJson(const AdapterState& state)
{
    return {
        {QStringLiteral("saved"), state.record.saved},
        {QStringLiteral("set"), state.record.set},
        {QStringLiteral("earlier"), state.record.earlier},
        {QStringLiteral("enabled"), state.setting},
        {QStringLiteral("present"), state.isPresent},
        {QStringLiteral("time"), state.time},
        {QStringLiteral("failure"), state.failure},
    };
}

} // namespace

StateRecord::StateRecord(const QString& path)
    : m_path(path)
{
    const std::optional<QByteArray> content = readWhole(path, LargestRecord);
    if (content) {
        read(*content);
    }
}

void StateRecord::read(const QByteArray& content)
{
    const QJsonDocument document = QJsonDocument::fromJson(content);
    if (!document.isObject()) {
        m_isDamaged = true;
        return;
    }
    const QJsonObject root = document.object();
    picture = root.value(QLatin1String("picture")).toObject();
    const QJsonObject states = root.value(QLatin1String("adapters")).toObject();
    for (auto state = states.begin(); state != states.end(); ++state) {
        adapters.insert(state.key(), stateFromJson(state.value().toObject()));
    }
    m_stored = content;
}

void StateRecord::setAside() const
{
    const QString aside = m_path + QStringLiteral(".damaged");
    static_cast<void>(QFile::remove(aside)); // an older damaged file
    static_cast<void>(QFile::rename(m_path, aside)); // if this fails, the file is overwritten
    qWarning().noquote()
        << QStringLiteral("The state file is damaged and was set aside: %1").arg(m_path);
}

QByteArray StateRecord::content() const
{
    QJsonObject states;
    for (auto state = adapters.cbegin(); state != adapters.cend(); ++state) {
        states.insert(state.key(), toJson(state.value()));
    }
    const QJsonObject root{
        {QStringLiteral("adapters"), states}, {QStringLiteral("picture"), picture}};
    return QJsonDocument(root).toJson();
}

QString StateRecord::store()
{
    const QByteArray now = content();
    if (now == m_stored) {
        return {};
    }
    if (std::exchange(m_isDamaged, false)) {
        setAside();
    }
    QString failure = writeWhole(m_path, now);
    if (failure.isEmpty()) {
        m_stored = now;
    }
    return failure;
}
