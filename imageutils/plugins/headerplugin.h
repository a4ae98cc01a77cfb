// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageheader.h>

#include <string>

// The one function that the plug-in exports, by the name `imageutilsPlugin`.
extern "C" {

/// Reads the header of the file at `utf8Path`, which is opened by the absolute path `name`; where
/// `jpeg` is not empty, that of the JPEG file whose bytes `jpeg` holds. False where it cannot: then
/// `error` says why, or is empty when memory does not suffice even for that.
using OpenHeaderFunction = bool(const std::string& utf8Path, const std::string& name,
                                const std::string& jpeg, ImageHeader& header,
                                std::string& error) noexcept;
}
