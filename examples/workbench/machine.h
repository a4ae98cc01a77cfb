// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The facts of this machine, a line each: system, processor, memory, identifier, graphics devices.
/// What the system does not tell is "-". Needs no display.
QStringList machineText();

/// The same facts as one line of JSON; memory is in GiB, an unknown text is empty.
QString machineJson();

/// The memory that new programs may have, in bytes; 0 where the system does not tell.
qint64 availableMemory();
