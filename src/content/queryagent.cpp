// SPDX-License-Identifier: BSD-3-Clause
#include "queryagent.h"

QueryAgent::~QueryAgent() = default;
