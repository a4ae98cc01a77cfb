// SPDX-License-Identifier: Apache-2.0
#include <aiengine/machine.h>

#include <QtCore/QString>
#include <QtCore/QSysInfo>

aiengine::Processor aiengine::processor() { return {}; }

bool aiengine::isAppleMachine() { return QSysInfo::kernelType() == QLatin1String("darwin"); }

std::pair<double, double> aiengine::memoryGiB() { return {}; }
