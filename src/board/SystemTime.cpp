#include "platform/SystemTime.h"

int SystemTime::init() { return 1; }
