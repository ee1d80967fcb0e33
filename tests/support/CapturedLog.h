#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

/// Collects what Logger writes while it lives.
class CapturedLog {
public:
    CapturedLog() { testing::internal::CaptureStderr(); }
    ~CapturedLog() { take(); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    /// Ends the collecting: "<subject>: <text>" of every record, without the place in the source.
    std::vector<std::string> take() {
        std::vector<std::string> records;
        std::istringstream lines(m_Taken ? "" : testing::internal::GetCapturedStderr());
        m_Taken = true;
        for (std::string line; std::getline(lines, line);) {
            line.erase(line.rfind(" ("));
            records.push_back(line.substr(std::string("nvrhw: ").size()));
        }
        return records;
    }

private:
    bool m_Taken = false;
};
