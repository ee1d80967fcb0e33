#include "platform/base/MisuseLog.h"

#include "platform/Diagnostics.h"

void MisuseLog::write(const char* report, const char* file, int line) {
    Logger::writeLog("SafePointer", report, file, line);
}
