#include "fuzz/FuzzFile.h"
#include "platform/MachineInfo.h"
#include "platform/SoftwarePackage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = fuzzFile(data, size);
    MachineInfo info;
    SoftwarePackage package;
    if (SystemInfoParser::parseMachineInfo(path, info) !=
        SoftwarePackageParser().parse(path, package)) {
        std::abort(); // the same syntax
    }
    return 0;
}
