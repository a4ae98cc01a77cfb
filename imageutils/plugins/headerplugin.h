// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageheader.h>

#include <streambuf>
#include <string>

// The one function that each part exports, by the name `imageutilsPlugin`.
extern "C" {

/// Of a reader of one format: reads the header of `file`, which stands at its start. False, and
/// `header` means nothing, where OpenImageIO has to be asked instead.
using ReadHeaderFunction = bool(std::streambuf& file, ImageHeader& header);

/// Of OpenImageIO: opens the file at `utf8Path`. False, and `error` says why, where it cannot.
using OpenHeaderFunction = bool(const char* utf8Path, ImageHeader& header, std::string& error);
}
