// SPDX-License-Identifier: Apache-2.0
#include "../addressspace.h"

void AddressSpace::limit(std::int64_t) {}
