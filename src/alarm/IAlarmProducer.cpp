#include "alarm/IAlarmProducer.h"

IAlarmProducer::~IAlarmProducer() noexcept(false) {}
