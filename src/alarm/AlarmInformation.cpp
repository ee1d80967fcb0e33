#include "alarm/AlarmInformation.h"

AlarmInformation::~AlarmInformation() = default;
