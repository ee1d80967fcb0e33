#include "ability/NVRAbilityConfigure.h"
#include "fuzz/FuzzFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    NVRAbilityConfigure reader;
    reader.setAbilityConfigFileName(fuzzFile(data, size));
    NVRDeviceAbility ability;
    reader.parse(ability);
    return 0;
}
