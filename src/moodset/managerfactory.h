// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class ContentManager;
class QueryAgentDatabase;

/// Makes a manager of a MoodsetContent::Type on `database`, which must outlive it. Null for a
/// number that has no manager. The service passes this function to ContentManager::setFactory().
ContentManager* makeManager(int type, QueryAgentDatabase& database);
