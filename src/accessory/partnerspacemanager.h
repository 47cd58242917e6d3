// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QString>

/// Tells the home screen which application goes with the active moodset: its partner space.
///
/// The home screen follows the key "/desktop/vantile-zavro-home/partnerspace/moodset", which holds
/// the full path of a desktop entry, or an empty text for no partner space. Main thread only, after
/// the application object is made.
class PartnerSpaceManager : public QObject
{
    Q_OBJECT

public:
    /// The process's one manager, made at the first call.
    static PartnerSpaceManager* instance();

    /// Names the partner space by the bare name of its desktop entry in "/usr/share/applications",
    /// such as "music" for "music.desktop". An empty name, and one without an entry (a warning),
    /// end the partner space of an earlier moodset. The value is stored when this returns; see
    /// MGConfItem::sync().
    void setPartnerSpace(const QString& name);

private:
    PartnerSpaceManager() = default;
};
