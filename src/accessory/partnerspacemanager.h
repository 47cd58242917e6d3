// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QString>

/// Tells the home screen which application goes with the active moodset: its partner space.
///
/// The home screen follows the key "/desktop/vantile-zavro-home/partnerspace/moodset", which holds
/// the full path of a desktop entry, or an empty text for no partner space. Main thread only. The
/// application object must exist.
class PartnerSpaceManager : public QObject
{
    Q_OBJECT

public:
    /// The only manager of the process, made at the first call.
    static PartnerSpaceManager* instance();

    /// Sets the partner space by the bare name of its desktop entry in "/usr/share/applications",
    /// such as "music" for "music.desktop". An empty name, or a name without an entry (a warning),
    /// ends the partner space of the earlier moodset. The value is stored when this returns; see
    /// MGConfItem::sync().
    void setPartnerSpace(const QString& name);

private:
    PartnerSpaceManager() = default;
};
