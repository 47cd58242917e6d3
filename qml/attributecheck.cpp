// SPDX-License-Identifier: BSD-3-Clause
#include "attributecheck.h"

#include <QColor>
#include <QCoreApplication>
#include <QUrl>

#include <cmath>

#include <colorstring.h>
#include <moodsetnames.h>

namespace {

namespace Attribute = MoodsetNames::Attribute;

constexpr int Loudest = 100;

QString tr(const char* text)
{
    return QCoreApplication::translate("Actions", text);
}

bool isNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

bool isColorAttribute(const QString& name)
{
    return name == Attribute::HighlightColor || name == Attribute::SecondaryHighlightColor
        || name == Attribute::PrimaryColor || name == Attribute::SecondaryColor;
}

bool isSwitch(const QString& name)
{
    if (name == Attribute::Favorite) {
        return true;
    }
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        if (name == tone.enabled) {
            return true;
        }
    }
    return false;
}

bool isToneFile(const QString& name)
{
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        if (name == tone.file) {
            return true;
        }
    }
    return false;
}

QString textOfUrl(const QVariant& value)
{
    return value.userType() == QMetaType::QUrl ? QString::fromLatin1(value.toUrl().toEncoded())
                                               : value.toString();
}

QString takeName(const QVariant& value, QVariant* taken)
{
    // A moodset without a name is shown with the name of its file.
    const QString name = value.toString();
    if (value.userType() != QMetaType::QString || name.contains(QChar::Null)
        || (name.trimmed().isEmpty() && !name.isEmpty())) {
        return tr("it is no name");
    }
    *taken = value;
    return {};
}

QString takeSwitch(const QVariant& value, QVariant* taken)
{
    if (value.userType() != QMetaType::Bool) {
        return tr("it is neither true nor false");
    }
    *taken = value;
    return {};
}

QString takeVolume(const QVariant& value, QVariant* taken)
{
    const double number = isNumber(value) ? value.toDouble() : std::nan("");
    const double rounded = std::round(number);
    // All comparisons with NaN are false.
    if (!(rounded >= 0 && rounded <= Loudest)) {
        return tr("it is no volume from 0 to 100");
    }
    *taken = int(rounded);
    return {};
}

QString takeColor(const QVariant& value, QVariant* taken)
{
    QColor color;
    if (value.userType() == QMetaType::QColor) {
        color = value.value<QColor>();
    } else if (value.userType() == QMetaType::QString && value.toString().isEmpty()) {
        *taken = QString(); // this removes the colour
        return {};
    } else if (value.userType() == QMetaType::QString) {
        color = colorFromString(value.toString());
    }
    if (!color.isValid()) {
        return tr("it is no colour");
    }
    *taken = colorToString(color);
    return {};
}

/// A tone's file is a map with a URL, or only the URL. An empty URL removes the tone's file.
QString takeToneFile(const QVariant& value, QVariant* taken)
{
    const QVariant given =
        value.userType() == QMetaType::QVariantMap ? value.toMap().value(Attribute::Url) : value;
    const bool isText =
        given.userType() == QMetaType::QString || given.userType() == QMetaType::QUrl;
    const QString text = isText ? textOfUrl(given) : QString();
    if (!isText || (!text.isEmpty() && !QUrl(text).isLocalFile())) {
        return tr("it is no URL of a file");
    }
    *taken = QVariantMap{{Attribute::Url, text}};
    return {};
}

QString takeTones(const QVariant& value, QVariant* taken)
{
    if (value.userType() != QMetaType::QVariantMap) {
        return tr("it is no map of tones");
    }
    QVariantMap tones;
    const QVariantMap given = value.toMap();
    for (auto tone = given.cbegin(); tone != given.cend(); ++tone) {
        if (!isToneFile(tone.key())) {
            return tr("there is no tone %1").arg(tone.key());
        }
        QVariant file;
        const QString fault = takeToneFile(tone.value(), &file);
        if (!fault.isEmpty()) {
            return QStringLiteral("%1: %2").arg(tone.key(), fault);
        }
        tones.insert(tone.key(), file);
    }
    *taken = tones;
    return {};
}

/// Checks the value of an attribute. If it is valid, it is stored in `taken`, and the result is
/// empty. Otherwise, the result says why it is not.
QString take(const QString& name, const QVariant& value, QVariant* taken)
{
    if (name == Attribute::DisplayName) {
        return takeName(value, taken);
    }
    if (isSwitch(name)) {
        return takeSwitch(value, taken);
    }
    if (name == Attribute::RingerVolume) {
        return takeVolume(value, taken);
    }
    if (isColorAttribute(name)) {
        return takeColor(value, taken);
    }
    if (name == Attribute::Resources) {
        return takeTones(value, taken);
    }
    return tr("a moodset has no such attribute that could be changed");
}

} // namespace

CheckedAttributes checkedAttributes(const QVariant& attributes)
{
    if (attributes.userType() != QMetaType::QVariantMap) {
        return {{}, tr("the attributes are no object")};
    }
    CheckedAttributes checked;
    const QVariantMap given = attributes.toMap();
    if (given.isEmpty()) {
        checked.error = tr("there are no attributes");
    }
    for (auto attribute = given.cbegin(); attribute != given.cend(); ++attribute) {
        QVariant value;
        const QString fault = take(attribute.key(), attribute.value(), &value);
        if (!fault.isEmpty()) {
            checked.error = QStringLiteral("%1: %2").arg(attribute.key(), fault);
            return checked;
        }
        checked.values.insert(attribute.key(), value);
    }
    return checked;
}
