// That the bench itself holds: what the tests on this board see is what the wire carries.
#include "board/qemu/LineRequest.h"
#include "board/qemu/SimChip.h"

#include <gtest/gtest.h>

TEST(BenchTest, WireAndLineShowEachOtherHeldLinesAreBusyAndAChipComesAndGoes) {
    SimChip chip("bench", 4);
    const auto error = [&](unsigned line) {
        try {
            LineRequest request(chip.device(), line, GPIO_V2_LINE_FLAG_INPUT);
        } catch (const std::system_error& failure) {
            return failure.code().value();
        }
        return 0;
    };
    {
        LineRequest input(chip.device(), 0, GPIO_V2_LINE_FLAG_INPUT);
        LineRequest output(chip.device(), 2, GPIO_V2_LINE_FLAG_OUTPUT);
        for (const bool high : {true, false, true}) {
            chip.pull(0, high);
            output.set(high);
            EXPECT_EQ(input.get(), high);
            EXPECT_EQ(chip.value(2), high);
            EXPECT_FALSE(chip.waitForValue(2, !high, 5));
        }
        EXPECT_FALSE(chip.value(1));
        EXPECT_EQ(error(2), EBUSY);
        EXPECT_EQ(error(4), EINVAL);
        chip.remove();
        EXPECT_EQ(error(0), ENOENT);
        EXPECT_THROW(output.set(true), std::system_error);
    }
    chip.restore();
    EXPECT_EQ(error(0), 0);
}
