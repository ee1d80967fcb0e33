#include "platform/base/Allocation.h"

#include <gtest/gtest.h>
#include <set>

namespace {

/// Fails a test that leaves tracked objects behind.
class LeakLedger : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        m_Before.clear();
        for (const Allocation& made : AllocationLedger::outstanding()) {
            m_Before.insert(made.address);
        }
    }

    void OnTestEnd(const testing::TestInfo&) override {
        for (const Allocation& left : AllocationLedger::outstanding()) {
            if (m_Before.count(left.address) == 0) {
                ADD_FAILURE() << "left behind: " << left.size << " bytes from " << left.file << ":"
                              << left.line;
            }
        }
    }

    std::set<const void*> m_Before;
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LeakLedger);
    return RUN_ALL_TESTS();
}
