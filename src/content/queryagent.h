// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Reads one kind of content on one connection. The connection's QueryAgentDatabase owns its
/// agents.
class QueryAgent
{
public:
    QueryAgent() = default;
    virtual ~QueryAgent();

    QueryAgent(const QueryAgent&) = delete;
    QueryAgent& operator=(const QueryAgent&) = delete;
};
