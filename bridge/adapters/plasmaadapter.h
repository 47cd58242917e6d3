// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "buspresence.h"
#include "hookprocess.h"

#include <QStringList>

#include <functional>

/// The adapter for Plasma, on desktops and phones. It sets the wallpaper of all desktops with a
/// script that the shell runs, and the accent colour with a program of Plasma.
class PlasmaAdapter : public Adapter
{
    Q_OBJECT
public:
    /// `pictures` is the directory of the copies of wallpapers.
    explicit PlasmaAdapter(const QString& pictures, QObject* parent = nullptr);

    QString name() const override;
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done) override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    /// Reads the wallpapers again, because the shell reports success for pictures that it cannot
    /// show.
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;
    void abandon() override;

private:
    /// Gets the output of the script, or the reason for the failure.
    using ScriptDone = std::function<void(const QString& output, const QString& failure)>;

    void runScript(const QString& script, const ScriptDone& done);
    void verifyPicture(const QJsonObject& plan, const Done& done);
    void applyAccent(const QString& color, const Done& done);
    void restoreAccent(const AdapterRecord& record, const Done& done);
    void runTool(const QString& program, const QStringList& arguments, const Done& done);
    QString restoringScript(const AdapterRecord& record) const;

    const QString m_picturesUri;
    BusPresence m_shell;
    HookProcess m_tool;
};

/// Makes a JavaScript literal of any text.
QString javaScriptText(const QString& text);
