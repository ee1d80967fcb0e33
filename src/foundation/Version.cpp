#include "foundation/Version.h"

const char* Version::text() { return NVRHW_VERSION; }
