#include "gpio/GPIOOperateRecord.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace {

TEST(GPIOOperateRecord, DerivesTheIntervalInSinglePrecision) {
    const struct {
        float frequency;
        double interval;
    } rows[] = {{3.0F, 333333.34375}, {0.5F, 2000000.0}, {0.0F, -2147483648.0}, {-2.0F, -500000.0}};
    for (const auto& row : rows) {
        GPIOOperateRecord record;
        EXPECT_EQ(record.getEachTimeOut(), 0.0);
        record.setFrequency(row.frequency);
        EXPECT_EQ(record.getEachTimeOut(), row.interval) << row.frequency;
    }
}

TEST(GPIOOperateRecord, JudgesItsTimesAtTheBoundaries) {
    // Half a second is exact in binary, so that the boundary is met to the microsecond.
    const int half = 500000;
    const struct {
        int mode;
        int timeOut;
        float frequency;
        int elapsed;
        bool operates;
        bool stops;
    } rows[] = {
        {1, half, 0, half - 1, false, false},
        {1, half, 0, half, true, false},
        {1, half, 0, half + 1, true, true},
        {1, 0, 0, 0, true, false},
        {2, half, 2, half - 1, false, false},
        {2, half, 2, half, true, false},
        {2, half, 2, half + 1, true, true},
        {2, 0, 2, 100 * half, true, false},
        {2, half, 0, 0, true, false},
        {2, half, -2, 0, true, false},
        {0, half, 2, half + 1, false, true},
        {3, half, 2, half + 1, false, true},
        {0, 0, 0, 100 * half, false, false},
        {1, half, 0, -half, false, false}, // the clock reads earlier than the record
        {2, half, 2, -half, false, false},
        {2, half, 0, -half, true, false},
        {1, -1, 0, 0, true, true},
    };
    for (const auto& row : rows) {
        ManualClock clock;
        GPIOOperateRecord record;
        record.setOperateMode(row.mode);
        record.setTimeOut(row.timeOut);
        record.setFrequency(row.frequency);
        record.setStartOperateTime(GPIOOperateRecord::now());
        record.setLastOperateTime(GPIOOperateRecord::now());
        clock.advance(row.elapsed);
        EXPECT_EQ(record.isTimeToOperation(), row.operates) << &row - rows;
        EXPECT_EQ(record.isTimeToStop(), row.stops) << &row - rows;
    }
}

} // namespace
