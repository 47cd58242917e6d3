// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <random>

/// Random choices, the same for each seed.
class Chance
{
public:
    explicit Chance(quint32 seed)
        : m_engine(seed)
    {
    }

    /// A number from 0 to count - 1.
    int below(int count) { return int(m_engine() % static_cast<std::mt19937::result_type>(count)); }
    bool isOneIn(int count) { return below(count) == 0; }

    /// An element of a list that is not empty.
    template <typename List>
    auto pick(const List& list)
    {
        return list[below(int(list.size()))];
    }

private:
    std::mt19937 m_engine;
};
