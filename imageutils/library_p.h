// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The 64 characters of base64 (RFC 4648, section 4); the value of a character is its index.
extern const std::string s_base64Alphabet;
