// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/exceptionreason.h>

#include <QtCore/QDebug>

#include <type_traits>
#include <utility>

/// Writes the warning "NAME: REASON", or nothing where not even the line finds memory.
inline void warnOfException(const char* name, const char* reason) noexcept
{
    try {
        qWarning("%s: %s", name, reason);
    } catch (...) { // no memory is left, and the neutral result needs none
    }
}

/// The result of `function`. When it throws: `neutral`, and the warning "NAME: REASON".
///
/// Every function that QML can call, and every slot, runs what may throw through this template: an
/// exception that reaches Qt's event loop or the QML engine ends the program. The line is written
/// after the stack has been unwound, so that the memory of the failed call is free again.
template<typename Function, typename Result = std::invoke_result_t<Function>>
Result neutralOnException(const char* name, Function&& function,
                          std::type_identity_t<Result> neutral)
{
    const char* reason = nullptr;
    try {
        return std::forward<Function>(function)();
    } catch (...) {
        reason = exceptionReason();
    }
    warnOfException(name, reason);
    return neutral;
}

/// The same for a function whose neutral result is a default-constructed value, or that has none.
template<typename Function>
auto neutralOnException(const char* name, Function&& function)
{
    if constexpr (std::is_void_v<std::invoke_result_t<Function>>) {
        const auto run = [&function] {
            std::forward<Function>(function)();
            return true;
        };
        neutralOnException(name, run, false);
    } else {
        return neutralOnException(name, std::forward<Function>(function), {});
    }
}
