// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "bridgeconfiguration.h"
#include "hookprocess.h"

/// The adapter for bars, terminals and launchers. It writes files from the user's templates, and
/// then runs a program of the user.
class FilesAdapter : public Adapter
{
    Q_OBJECT
public:
    explicit FilesAdapter(const BridgeConfiguration& configuration, QObject* parent = nullptr);

    QString name() const override;
    int limitMs() const override;
    /// No, because a hook that hangs would hang again.
    bool isTriedAgain() const override { return false; }
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done) override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;
    void abandon() override;

private:
    const QVector<TemplateFile> m_templates;
    const QString m_hookProgram;
    const int m_limitMs;
    HookProcess m_hook;
};

/// Replaces "{{highlight}}" and the other names in a template with the values of the look. Nothing
/// if the template contains a value that the look does not have. Unknown names stay as they are.
std::optional<QByteArray> fillTemplate(const QByteArray& text, const Look& look);
