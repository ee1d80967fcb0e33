// Parts of the tool, each for itself.

#include "lines/BoardLines.h"
#include "panel/PanelList.h"
#include "platform/Diagnostics.h"
#include "print/LineWriter.h"
#include "print/LogBook.h"
#include "print/Table.h"
#include "print/Text.h"
#include "support/Gate.h"
#include "support/SimulatedBoard.h"

#include <gtest/gtest.h>

TEST(Table, IsCutInItsLongestTextsAndOnlyForATerminal) {
    Text::useLanguage();
    Table table;
    table.addList({{{"", "ID", 7}, {"", "NAME", "Gerät"}, {"", "CAUSE", "中文 cannot be read"}},
                   {{"", "ID", 12}, {"", "NAME", "x"}, {"", "CAUSE", ""}}});
    const std::string whole = "ID  NAME   CAUSE\n 7  Gerät  中文 cannot be read\n12  x\n";
    if (MB_CUR_MAX == 1) { // a board without UTF-8: what it cannot show raises nothing
        EXPECT_NE(table.text(false, 8).find("ID  NAME"), std::string::npos);
        return;
    }
    EXPECT_EQ(table.text(false, 0), whole);
    EXPECT_EQ(table.text(false, 31), whole);
    EXPECT_EQ(table.text(false, 21), "ID  NAME   CAUSE\n 7  Gerät  中文 cann…\n12  x\n");
    EXPECT_EQ(table.text(false, 8), "ID  NAME\n 7  Ger…\n12  x\n"); // too narrow even for that
    EXPECT_NE(table.text(true, 0).find("\033[1mNAME"), std::string::npos);
}

TEST(BoardLines, AreOpenedWithoutRecordsOfTheirFaultsAndWithAllOthers) {
    const SimulatedBoard files{NVRHW_SAMPLE_BOARD};
    std::filesystem::remove(files.line(0, 0));
    LogBook::open();
    const nvrhw::Board board = BoardLines::look();
    Logger::writeLog("Clock", "kept", "test", 1);
    EXPECT_NE(board.input(1).cause().text().find("No such file"), std::string::npos);
    EXPECT_EQ(LogBook::take(), std::vector<std::string>{"kept"});
    Logger::setSink({});
}

TEST(LineWriter, LeavesOutAndCountsWhatHasNoRoom) {
    Gate arrived;
    Gate isRead;
    std::vector<std::string> written;
    LineWriter writer(
        2,
        [&](const std::string& line) {
            arrived.open();
            isRead.wait();
            written.push_back(line);
        },
        [](int count) { return std::to_string(count) + " left out"; });
    writer.post("first");
    ASSERT_TRUE(arrived.wait()); // at the writer, which holds it
    for (const char* line : {"second", "third", "fourth", "fifth"}) {
        writer.post(line); // returns although nobody reads
    }
    isRead.open();
    writer.finish();
    EXPECT_EQ(written, (std::vector<std::string>{"first", "second", "third", "2 left out"}));
}

TEST(Panel, LeavesOutColumnsWhereThereIsNoRoom) {
    std::vector<PanelColumn> columns{{"", 0, 2, false},       {"", 1, 14, true},
                                     {"line", 4, 4, false},   {"lvl", 3, 3, false},
                                     {"state", 0, 12, false}, {"mode", 5, 20, true}};
    const std::pair<int, std::vector<int>> cases[] = {{62, {2, 14, 4, 3, 12, 20}},
                                                      {45, {2, 11, 4, 3, 12, 6}},
                                                      {38, {2, 11, 4, 3, 12, 0}},
                                                      {30, {2, 8, 0, 3, 12, 0}}};
    for (const auto& [width, widths] : cases) { // each narrower than the one before
        PanelColumn::narrow(columns, width);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            EXPECT_EQ(columns[i].width, widths[i]) << width << ", column " << i;
        }
    }
}
