#include "platform/I2CController.h"

int I2CController::init() { return 1; }
