#include "fuzz/FuzzFile.h"
#include "platform/MonitorParam.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MonitorParamConfig store(1, fuzzFile(data, size));
    std::vector<MonitorParam> before;
    std::vector<MonitorParam> after;
    MonitorParam param;
    param.setMonitorId(3);
    const int readable = store.getAllMonitorParam(before);
    const int stored = store.setMonitorParam(param);
    const int again = store.getAllMonitorParam(after);
    if (stored != readable || again != readable || after.size() < before.size() ||
        (stored != 0 && store.getMonitorType(param.getMonitorId(), param) == 0)) {
        std::abort(); // what was readable stays so and loses nothing
    }
    return 0;
}
