// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "buspresence.h"
#include "hookprocess.h"

#include <QStringList>

#include <functional>

/// Plasma, on desktops and phones: the wallpaper of all desktops by a script of the shell, and the
/// accent colour by Plasma's own program.
class PlasmaAdapter : public Adapter
{
    Q_OBJECT
public:
    /// `pictures` is the directory of the copies that are handed out.
    explicit PlasmaAdapter(const QString& pictures, QObject* parent = nullptr);

    QString name() const override;
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done) override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    /// Reads back: the shell reports success for pictures that it cannot show.
    void verify(const QJsonObject& plan, const Done& done) override;
    void restore(const AdapterRecord& record, const Done& done) override;
    void abandon() override;

private:
    /// With what the script has printed, or with what went wrong.
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
    int m_round = 0; ///< tells an answer that came too late from that of the present step
};

/// A text as a literal of JavaScript, whatever is in it.
QString javaScriptText(const QString& text);
