#include "alarm/IAlarmIn.h"

IAlarmIn::~IAlarmIn() noexcept(false) {}
