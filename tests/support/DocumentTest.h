#pragma once

#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

/// A test on a board with a copy of a folder of documents. It fails on log records that it does
/// not look for.
class DocumentTest : public testing::Test {
protected:
    explicit DocumentTest(const char* documents = NVRHW_FIXTURES) : m_Board(documents) {}

    void TearDown() override { EXPECT_EQ(m_Log.take(), ""); }

    /// Where a file of the board really is.
    std::string real(const std::string& file) const { return m_Board.root().string() + file; }

    std::string read(const std::string& file) const {
        std::ifstream stream(real(file));
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    void write(const std::string& file, const std::string& text) const {
        m_Board.writeFile(file, text);
    }

    /// Expects this record, and no other since the last look at the log.
    void expectRecord(const std::string& record) { m_Log.expectOne({"nvrhw: " + record + " ("}); }

    SimulatedBoard m_Board;
    LogCapture m_Log;
};
