// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "bridgeconfiguration.h"
#include "hookprocess.h"

/// Files that are made of the user's templates, and a program of the user that is run when they are
/// written: for bars, terminals and launchers.
class FilesAdapter : public Adapter
{
    Q_OBJECT
public:
    explicit FilesAdapter(const BridgeConfiguration& configuration, QObject* parent = nullptr);

    QString name() const override;
    int limitMs() const override;
    /// No: a hook that hangs would hang again.
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

/// A template with the values of the look in the places of "{{highlight}}" and the like; nothing if
/// it asks for a value that the look does not have. Names that are none of ours stay as they are.
std::optional<QByteArray> fillTemplate(const QByteArray& text, const Look& look);
