// SPDX-License-Identifier: BSD-3-Clause
#include "filesadapter.h"

#include "filecontent.h"

#include <QCryptographicHash>
#include <QFile>

#include <algorithm>
#include <utility>

namespace {

/// Larger files are not templates, and their old content is not kept.
constexpr qint64 LargestTemplate = qint64(1024) * 1024;

/// The name under which the hook stands among the values.
const QString HookName = QStringLiteral("hook");

QString hashOf(const QByteArray& content)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

/// Whether a path means the same with and without any kind of quotes, because it is not known how a
/// target quotes it.
bool isQuotable(const QString& path)
{
    return std::none_of(path.begin(), path.end(), [](QChar character) {
        return character < QLatin1Char(' ') || QStringLiteral("\"'\\`$").contains(character);
    });
}

using Values = QVector<std::pair<QByteArray, QByteArray>>;

void appendColor(Values* values, const QByteArray& name, const std::optional<Argb>& color)
{
    values->append({name, color ? color->hex().toUtf8() : QByteArray()});
    values->append({name + ".rgb", color ? color->rgb().toUtf8() : QByteArray()});
    values->append({name + ".argb", color ? color->argb().toUtf8() : QByteArray()});
}

Values templateValues(const Look& look)
{
    Values values;
    appendColor(&values, "highlight", look.highlight);
    appendColor(&values, "secondaryHighlight", look.secondaryHighlight);
    appendColor(&values, "primary", look.primary);
    appendColor(&values, "secondary", look.secondary);
    values.append(
        {"wallpaper", isQuotable(look.wallpaper) ? look.wallpaper.toUtf8() : QByteArray()});
    return values;
}

QMap<QString, QString> hookVariables(const Look& look)
{
    const auto hex = [](const std::optional<Argb>& color) {
        return color ? color->hex() : QString();
    };
    return {
        {QStringLiteral("MOODSET_FILE"), look.moodset},
        {QStringLiteral("MOODSET_WALLPAPER"), look.wallpaper},
        {QStringLiteral("MOODSET_HIGHLIGHT"), hex(look.highlight)},
        {QStringLiteral("MOODSET_SECONDARY_HIGHLIGHT"), hex(look.secondaryHighlight)},
        {QStringLiteral("MOODSET_PRIMARY"), hex(look.primary)},
        {QStringLiteral("MOODSET_SECONDARY"), hex(look.secondary)},
    };
}

std::optional<QByteArray> contentOf(const TemplateFile& file, const Look& look)
{
    const std::optional<QByteArray> text = readWhole(file.source, LargestTemplate);
    return text ? fillTemplate(*text, look) : std::nullopt;
}

} // namespace

std::optional<QByteArray> fillTemplate(const QByteArray& text, const Look& look)
{
    QByteArray filled = text;
    const Values values = templateValues(look);
    for (const auto& [name, value] : values) {
        const QByteArray place = "{{" + name + "}}";
        if (value.isEmpty() && text.contains(place)) {
            return std::nullopt;
        }
        filled.replace(place, value);
    }
    return filled;
}

FilesAdapter::FilesAdapter(const BridgeConfiguration& configuration, QObject* parent)
    : Adapter(parent)
    , m_templates(configuration.templates)
    , m_hookProgram(configuration.hook)
    , m_limitMs(configuration.hookLimitSeconds * 1000)
{
}

QString FilesAdapter::name() const
{
    return QStringLiteral("files");
}

int FilesAdapter::limitMs() const
{
    return m_limitMs;
}

void FilesAdapter::detect()
{
    setPresent(!m_templates.isEmpty() || !m_hookProgram.isEmpty());
}

QJsonObject FilesAdapter::plan(const Appearance& appearance) const
{
    QJsonObject plan;
    if (appearance.look.moodset.isEmpty()) {
        return plan;
    }
    for (const TemplateFile& file : m_templates) {
        const std::optional<QByteArray> content = contentOf(file, appearance.look);
        if (content) {
            plan.insert(file.target, hashOf(*content));
        }
    }
    if (!m_hookProgram.isEmpty()) {
        const QMap<QString, QString> variables = hookVariables(appearance.look);
        const QStringList values = variables.values();
        plan.insert(
            HookName, hashOf(m_hookProgram.toUtf8() + '\0' + values.join(QChar(0)).toUtf8()));
    }
    return plan;
}

QString FilesAdapter::shortfall(const Appearance& appearance) const
{
    if (appearance.look.moodset.isEmpty()) {
        return {};
    }
    for (const TemplateFile& file : m_templates) {
        if (!contentOf(file, appearance.look)) {
            return QStringLiteral("The template %1 cannot be read, is larger than 1 MiB, or asks "
                                  "for a value that there is not.")
                .arg(file.source);
        }
    }
    return {};
}

void FilesAdapter::save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
{
    QJsonObject saved = record.saved;
    for (const TemplateFile& file : m_templates) {
        if (!plan.contains(file.target)) {
            continue;
        }
        if (!QFile::exists(file.target)) {
            saved.insert(file.target, QJsonValue());
            continue;
        }
        const std::optional<QByteArray> content = readWhole(file.target, LargestTemplate);
        if (!content) {
            done(
                {},
                QStringLiteral("%1 is no file of up to 1 MiB, and stays as it is.")
                    .arg(file.target));
            return;
        }
        if (!record.isOwn(file.target, hashOf(*content))) {
            saved.insert(file.target, QString::fromLatin1(content->toBase64()));
        }
    }
    done(saved, {});
}

void FilesAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    for (const TemplateFile& file : m_templates) {
        const std::optional<QByteArray> content = contentOf(file, appearance.look);
        if (!content || !plan.contains(file.target)) {
            continue;
        }
        const QString failure = writeWhole(file.target, *content);
        if (!failure.isEmpty()) {
            done(failure);
            return;
        }
    }
    if (m_hookProgram.isEmpty()) {
        done({});
    } else {
        m_hook.run(m_hookProgram, hookVariables(appearance.look), done);
    }
}

void FilesAdapter::verify(const QJsonObject& plan, const Done& done)
{
    for (const TemplateFile& file : m_templates) {
        const QByteArray content = readWhole(file.target, LargestTemplate).value_or(QByteArray());
        if (plan.contains(file.target) && plan.value(file.target) != hashOf(content)) {
            done(QStringLiteral("%1 has other content than was written.").arg(file.target));
            return;
        }
    }
    done({});
}

void FilesAdapter::restore(const AdapterRecord& record, const Done& done)
{
    QString failure;
    for (auto saved = record.saved.begin(); saved != record.saved.end(); ++saved) {
        const QString& path = saved.key();
        const std::optional<QByteArray> content = readWhole(path, LargestTemplate);
        if (!content || !record.isOwn(path, hashOf(*content))) {
            continue;
        }
        if (saved.value().isString()) {
            failure = writeWhole(path, QByteArray::fromBase64(saved.value().toString().toLatin1()));
        } else if (!QFile::remove(path)) {
            failure = QStringLiteral("%1 cannot be removed.").arg(path);
        }
    }
    done(failure);
}

void FilesAdapter::abandon()
{
    m_hook.end();
}
