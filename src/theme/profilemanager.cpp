// SPDX-License-Identifier: BSD-3-Clause
#include "profilemanager.h"

void ProfileManager::classBegin()
{
}

void ProfileManager::componentComplete()
{
    if (activateProfileOnChange()) {
        activate();
    }
}
