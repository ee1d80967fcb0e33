#include <iostream>
#include <nvrhw/nvrhw.h>
using namespace std::chrono_literals;

int main() {
    nvrhw::Board board; // NVRHW_ROOT or "/"; nvrhw::Board board("/tmp/board") in a test
    auto siren = board.output("siren"); // by name or id; no such output: nvrhw::Error that lists
                                        // those there are
    auto watch = board.onInput([&](const nvrhw::InputChange& change) {
        std::cout << change << '\n'; // 14:03:07.412 input 3 (door) alarm
        if (change.input.id == 3 && change.state == nvrhw::Input::Alarm) {
            siren.flash(500ms, 5s); // from in here everything may be called
        }
    });
    nvrhw::waitForSignal(); // SIGINT, SIGTERM
} // the watch ends first, then the board; outputs are left or put to rest as configured
