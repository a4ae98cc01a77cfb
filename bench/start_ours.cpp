// SPDX-License-Identifier: Apache-2.0
//
// A program that links the library and processes no picture.
#include <imageutils/osutils.h>

int main() { return OSUtils::generateUuid().isEmpty(); }
