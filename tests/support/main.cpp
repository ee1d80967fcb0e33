#include "platform/Allocation.h"

#include <gtest/gtest.h>

namespace {

/// Fails a test that leaves tracked objects behind.
class LeakLedger : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        m_Before = AllocationLedger::outstanding().size();
    }

    void OnTestEnd(const testing::TestInfo&) override {
        const std::vector<Allocation> left = AllocationLedger::outstanding();
        for (std::size_t i = m_Before; i < left.size(); ++i) {
            ADD_FAILURE() << "left behind: " << left[i].size << " bytes from " << left[i].file
                          << ":" << left[i].line;
        }
    }

    std::size_t m_Before = 0;
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LeakLedger);
    return RUN_ALL_TESTS();
}
