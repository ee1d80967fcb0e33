#include "platform/System.h"

#include <unistd.h>

int SystemHelper::getPid() { return static_cast<int>(getpid()); }
