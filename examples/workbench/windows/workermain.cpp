// SPDX-License-Identifier: Apache-2.0
#include "../workerprocess.h"

int main(int argc, char** argv) { return runWorker(argc, argv); }
