#include "platform/BoardVersion.h"

const char* BoardVersion::text() { return NVRHW_VERSION; }
