// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <system_error>

/// Why the exception that is being handled was thrown, in words for the user of the application:
/// `what()` names functions of the C++ library or assertions. A static text, because memory may be
/// exhausted. Called inside a catch block; in standard types alone, so that plug-ins can use it.
inline const char* exceptionReason() noexcept
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "not enough memory";
    } catch (const std::length_error&) {
        return "a size in the data is too large";
    } catch (const std::system_error&) { // std::ios_base::failure too
        return "reading or writing failed";
    } catch (const std::exception& exception) {
        // OpenCV reports a failed allocation by an exception of its own.
        if (std::strstr(exception.what(), "Insufficient memory"))
            return "not enough memory";
    } catch (...) {}
    return "the data is damaged or of an unsupported kind";
}
