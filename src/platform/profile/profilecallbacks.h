// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "profile.h"

#include <algorithm>
#include <vector>

/// The callbacks of one kind, in the order in which they were added. Callbacks may be added and
/// removed while they are called.
template <typename Function>
class ProfileCallbacks
{
public:
    void add(Function function, void* userData, profile_user_data_free_fn freeData)
    {
        m_callbacks.push_back({function, userData, freeData, ++m_lastId});
    }

    /// Removes the first callback that was added with these arguments. False if there is none.
    bool remove(Function function, void* userData)
    {
        const auto found =
            std::find_if(m_callbacks.begin(), m_callbacks.end(), [=](const Callback& callback) {
                return callback.function == function && callback.userData == userData;
            });
        if (found == m_callbacks.end()) {
            return false;
        }
        const Callback removed = *found;
        m_callbacks.erase(found);
        if (removed.freeData != nullptr) {
            removed.freeData(removed.userData);
        }
        return true;
    }

    /// Calls all callbacks with `arguments` and their user data, except those that are removed
    /// meanwhile.
    template <typename... Arguments>
    void call(Arguments... arguments) const
    {
        const std::vector<Callback> callbacks = m_callbacks;
        for (const Callback& callback : callbacks) {
            if (contains(callback.id)) {
                callback.function(arguments..., callback.userData);
            }
        }
    }

private:
    struct Callback
    {
        Function function;
        void* userData;
        profile_user_data_free_fn freeData;
        int id;
    };

    bool contains(int id) const
    {
        return std::any_of(m_callbacks.begin(), m_callbacks.end(), [id](const Callback& callback) {
            return callback.id == id;
        });
    }

    std::vector<Callback> m_callbacks;
    int m_lastId = 0;
};
