// nvrhw-bench-start ours|peer BOARD: starts the services, or parses what they read with the same
// libraries and looks at nothing in it; tells the seconds and the kilobytes of memory it took.
#include "config/ConfigFileNameConst.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <chrono>
#include <cstdio>
#include <ini.h>
#include <pugixml.hpp>
#include <string>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

long residentKilobytes() {
    long pages = 0;
    long resident = 0;
    FILE* const file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr || std::fscanf(file, "%ld %ld", &pages, &resident) != 2) {
        return 0;
    }
    std::fclose(file);
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

int takeField(void* user, const char* /*section*/, const char* /*name*/, const char* /*value*/) {
    ++*static_cast<int*>(user);
    return 1;
}

int parse(const std::string& root) {
    using Names = ConfigFileNameConst;
    int fields = 0;
    for (const std::string& name :
         {Names::getHardwareConfigFileName(), Names::getNVRAbilityFileName(),
          Names::getFileSystemFileName()}) {
        pugi::xml_document document;
        fields += document.load_file((root + name).c_str()) ? 1 : 0;
    }
    for (const std::string& name :
         {Names::getMachineInfoFileName(), Names::getSoftwarePackageFileName()}) {
        ini_parse((root + name).c_str(), takeField, &fields);
    }
    return fields;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    GlobalEnv::getInstance()->setRootDirectory(argv[2]);
    const bool isOurs = std::string(argv[1]) == "ours";
    const long before = residentKilobytes();
    const auto begin = Clock::now();
    bool isGood = true;
    if (isOurs) {
        HardwareServiceFactory::getInstance()->start();
    } else {
        isGood = parse(argv[2]) > 0;
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    std::printf("%.9f %ld\n", seconds, residentKilobytes() - before);
    return isGood && std::fflush(stdout) == 0 ? 0 : 1;
}
