// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "buspresence.h"

/// The adapter for GNOME and Phosh. It sets the settings of the desktop in the key/value store.
class GnomeAdapter : public Adapter
{
    Q_OBJECT
public:
    /// `pictures` is the directory of the copies of wallpapers.
    explicit GnomeAdapter(const QString& pictures, QObject* parent = nullptr);

    QString name() const override;
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done) override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;

private:
    const QString m_pictures;
    BusPresence m_shells;
};

/// The accent colour of the desktop with the nearest hue; "slate" for a colour with almost no
/// chroma.
QString nearestAccent(const Argb& color);
