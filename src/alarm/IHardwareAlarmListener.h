#pragma once

#include "platform/Observer.h"
#include "platform/base/Export.h"

/// What an application registers to receive alarm messages: update() is called with each
/// AlarmInformation, in the thread that saw the change.
class NVRHW_API IHardwareAlarmListener : public IObserver {};
