#include "support/Gate.h"
#include "support/SimulatedBoard.h"

#include <iostream>
#include <nvrhw/nvrhw.h>
#include <thread>
using namespace std::chrono_literals;
TEST(Try, Out) {
    SimulatedBoard files(NVRHW_SAMPLE_BOARD);
    nvrhw::Board board;
    for (auto& o : board.outputs())
        std::cout << o.id << " " << o.name << "\n";
    auto siren = board.output(2);
    Gate gate;
    auto outs = board.onOutput(
        [&](const nvrhw::OutputChange& change) { std::cout << change << std::endl; });
    auto drives =
        board.onDrive([&](const nvrhw::OutputChange& change) { std::cout << change << std::endl; });
    auto watch = board.onInput([&](const nvrhw::InputChange& change) {
        std::cout << change << std::endl;
        if (change.input.id == 3 && !change.isPresent) {
            gate.open();
            siren.flash(500ms, 2s);
        }
    });
    auto input = board.input(3);
    files.setLevel(input.line.bank, input.line.bit, 1 - input.level());
    EXPECT_TRUE(gate.wait());
    std::filesystem::remove(files.line(input.line.bank, input.line.bit));
    EXPECT_TRUE(gate.wait(2));
    files.addLine(input.line.bank, input.line.bit, 0);
    EXPECT_TRUE(gate.wait(3));
    std::filesystem::rename(files.bank(input.line.bank), files.root() / "gone");
    EXPECT_TRUE(gate.wait(4));
    siren.hold(100ms);
    std::this_thread::sleep_for(300ms);
}
