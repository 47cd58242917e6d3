// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"

#include <mgconfitem.h>
#include <moodsetnames.h>

QString readActiveMoodset()
{
    return MGConfItem(MoodsetNames::ThemeKey::ActiveMoodset).value().toString();
}
