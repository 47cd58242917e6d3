// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

// Commands about pictures, bundles, the library as a whole, the daemon and the shell.
Command statusCommand();
Command photosCommand();
Command watchCommand();
Command indexCommand();
Command waitCommand();
Command validateCommand();
Command installCommand();
Command refreshCommand();
Command doctorCommand();
Command cleanCommand();
Command backupCommand();
Command restoreCommand();
Command completionCommand();
Command helpCommand();
