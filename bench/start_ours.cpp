// SPDX-License-Identifier: Apache-2.0
//
// A program that asks the library for no picture.
#include <imageutils/osutils.h>

int main() { return OSUtils::generateUuid().isEmpty(); }
