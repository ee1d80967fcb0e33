#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

/// Keeps what is written to standard error, the log records among it, for as long as it lives.
class LogCapture {
public:
    LogCapture() { dup2(fileno(m_File), STDERR_FILENO); }
    ~LogCapture() {
        dup2(m_Saved, STDERR_FILENO);
        close(m_Saved);
        fclose(m_File);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The text written since the last call.
    std::string take() {
        std::string text;
        char buffer[4096];
        while (const ssize_t size = pread(fileno(m_File), buffer, sizeof(buffer), m_Read)) {
            text.append(buffer, static_cast<std::size_t>(size));
            m_Read += size;
        }
        return text;
    }

    /// Expects exactly one line since the last call, or so many, with all these parts.
    void expectOne(const std::vector<std::string>& parts) { expect(1, parts); }
    void expect(int lines, const std::vector<std::string>& parts) {
        const std::string text = take();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), lines) << text;
        for (const std::string& part : parts) {
            EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
        }
    }

    /// Waits until the text was written; false when that has not happened within ten seconds.
    /// Appends what came until then to `seen`, if there is one.
    bool waitFor(const std::string& part, std::string* seen = nullptr) {
        std::string text = take();
        for (int i = 0; i < 10000 && text.find(part) == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            text += take();
        }
        if (seen != nullptr) {
            *seen += text;
        }
        return text.find(part) != std::string::npos;
    }

private:
    std::FILE* const m_File = std::tmpfile();
    const int m_Saved = dup(STDERR_FILENO);
    off_t m_Read = 0;
};
