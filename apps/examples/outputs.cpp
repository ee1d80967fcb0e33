// Flashes an alarm output for a second, then holds it until it is put to rest.
//
//     outputs [OUTPUT]       its name or id; 1 when it is left out
#include <iostream>
#include <nvrhw/nvrhw.h>
#include <thread>

using namespace std::chrono_literals;

int main(int argc, char** argv) try {
    const nvrhw::Board board;
    const nvrhw::Output output = board.output(argc > 1 ? argv[1] : "1");
    const auto watch =
        board.onOutput([](const nvrhw::OutputChange& change) { std::cout << change << std::endl; });

    output.flash(400ms, 1s);             // returns at once
    std::this_thread::sleep_for(1200ms); // the application has other things to do

    if (const nvrhw::Result result = output.hold(); !result) {
        std::cerr << result.error().what() << '\n'; // the line cannot be driven, and why
        return 1;
    }
    const nvrhw::OutputState state = output.state();
    std::cout << "active: " << state.isActive << ", the line agrees: " << state.agrees << std::endl;
    output.rest(); // or it would stay on after the end of the process
} catch (const nvrhw::Error& error) {
    std::cerr << error.what() << '\n'; // all causes, with file and line
    return 1;
}
