// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "activation.h"
#include "invocation.h"
#include "moodsetservice.h"
#include "text.h"

/// Starts the daemon if it does not run; the outcome of a command that needs it is done() if it
/// runs now.
inline Outcome needDaemon(const MoodsetService& service)
{
    const QString fault = service.start();
    return fault.isEmpty() ? Outcome() : Outcome::failed(fault, ExitStatus::NoDaemon);
}

inline bool hasFailed(const Outcome& outcome)
{
    return outcome.status != ExitStatus::Done;
}

/// The options of commands that may have to wait for the network.
inline std::vector<Option> networkOptions()
{
    return {
        {"timeout", "SECONDS", ValueKind::Seconds,
         QT_TRANSLATE_NOOP(
             "Text", "wait for a picture on the network for so long; 60 if not given")},
        {"no-wait", nullptr, ValueKind::Flag,
         QT_TRANSLATE_NOOP("Text", "do not wait for a picture on the network")}};
}

inline NetworkWait networkWait(const Invocation& invocation)
{
    constexpr int standardMs = 60000;
    return {!invocation.has("no-wait"), invocation.timeoutMs(standardMs)};
}
