// SPDX-License-Identifier: Apache-2.0
#include <platform/colorscheme.h>

Platform::ColorScheme Platform::preferredColorScheme(std::chrono::milliseconds)
{
    return ColorScheme::NoAnswer;
}
