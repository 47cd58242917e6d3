// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "buspresence.h"

#include <QPointer>

class QDBusPendingCallWatcher;
class SettingsBackend;

/// The adapter for the settings portal. It is a backend that offers the highlight colour as the
/// accent colour, and no other setting. So all other settings still come from the desktop's own
/// backend.
class PortalAdapter : public Adapter
{
    Q_OBJECT
public:
    explicit PortalAdapter(QObject* parent = nullptr);
    ~PortalAdapter() override;

    QString name() const override;
    bool isKept() const override { return false; }
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    /// Asks the frontend, if one runs, which colour it gives to programs.
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;

private:
    BusPresence m_frontend;
    SettingsBackend* m_backend = nullptr; // a child
};
