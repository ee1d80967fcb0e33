#include "alarm/IAlarmOut.h"

IAlarmOut::~IAlarmOut() noexcept(false) {}
