// A small recorder: it switches outputs by rules until SIGINT or SIGTERM, then puts them to rest.
#include "Recorder.h"

#include <iostream>

int main(int argc, char** argv) try {
    if (argc < 3) {
        throw std::invalid_argument("usage: recorder BOARD BRIGHTNESS_OF_MONITOR INPUT:OUTPUT...");
    }
    nvrhw::BoardOptions options;
    options.directory = argv[1]; // "/" on a real board
    options.atEnd = nvrhw::BoardOptions::RestAll;
    const nvrhw::Board board(options);

    const NVRDeviceAbility& ability = board.abilities();
    std::cout << R"({"channels":)" << ability.getMaxChannelNumber() << R"(,"disks":)"
              << ability.getDiskNumber() << "}" << std::endl;

    MonitorParam monitor = board.monitors().at(0);
    monitor.setBrightness(std::stoi(argv[2]));
    if (const auto result = board.setMonitor(monitor); !result) {
        throw result.error();
    }
    const Recorder recorder(board, {argv + 3, argv + argc},
                            [](const std::string& line) { std::cout << line << std::endl; });
    nvrhw::waitForSignal();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "recorder: " << error.what() << '\n';
    return 1;
}
