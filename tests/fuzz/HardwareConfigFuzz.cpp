#include "fuzz/FuzzFile.h"
#include "platform/HardwareConfigure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    GPIOSignalConfigure reader;
    reader.setConfigName("GPIOAlarmIn");
    reader.setConfigFileName(fuzzFile(data, size));
    SafePointer<HardwareConfigItemList> list;
    if ((reader.getConfig(list) == 0) != list.isNull()) {
        std::abort();
    }
    return 0;
}
