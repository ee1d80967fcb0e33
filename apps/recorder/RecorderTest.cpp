// The recorder on a copy of the sample board with a line that vanishes and comes back.
#include "Recorder.h"

#include <filesystem>
#include <fstream>
#include <future>
#include <gtest/gtest.h>

TEST(RecorderTest, SwitchesAnOutputByItsRuleAlsoWhenALineVanishes) {
    std::string root = (std::filesystem::temp_directory_path() / "recorder-XXXXXX").string();
    std::filesystem::copy(NVRHW_SAMPLE_BOARD, mkdtemp(root.data()),
                          std::filesystem::copy_options::recursive);
    const std::string line = root + "/dev/gpiodrv/0/0";
    {
        std::promise<std::string> began, ended;
        const nvrhw::Board board(root);
        const Recorder recorder(board, {"front door:siren"}, [&](const std::string& told) {
            if (told.find("\"output\"") != std::string::npos) {
                (told.find("began") != std::string::npos ? began : ended).set_value(told);
            }
        });
        std::filesystem::remove(line);
        EXPECT_NE(began.get_future().get().find(R"("name":"siren")"), std::string::npos);
        EXPECT_EQ(board.input("front door").cause().where, line);
        std::ofstream(line) << "0";
        ended.get_future().wait();
        EXPECT_FALSE(board.output("siren").state().isActive);
        for (const char* rule : {"front door", "1:sirene", "17:siren"}) {
            EXPECT_THROW(Recorder(board, {rule}, nullptr), nvrhw::Error) << rule;
        }
    }
    std::filesystem::remove_all(root);
}
