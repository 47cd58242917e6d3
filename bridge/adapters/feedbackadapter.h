// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "buspresence.h"

/// The adapter for feedbackd. It sets the profile and the tones: a sound theme in the user's data
/// directory, and a feedback theme that names its sounds.
class FeedbackAdapter : public Adapter
{
    Q_OBJECT
public:
    /// With `keepsSilent`, the profile "silent" stays. Otherwise it becomes "quiet", with which the
    /// phone still vibrates.
    explicit FeedbackAdapter(bool keepsSilent, QObject* parent = nullptr);

    QString name() const override;
    Subject subject() const override { return Subject::Sound; }
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done) override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;

private:
    const bool m_keepsSilent;
    BusPresence m_service;
};
