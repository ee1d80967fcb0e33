#pragma once

#include "lines/BoardLines.h"
#include "print/Console.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// A line and what was found at it.
struct LineState {
    Line line;
    int level = -1;    ///< 0 or 1; -1 when it could not be read
    std::string cause; ///< why it could not; empty when it could

    bool isReadable() const { return level >= 0; }

    /// What is known of the line, for programs; "level" is null when it could not be read.
    Json json() const;
};

/// Reads lines, and knows why one cannot be read. The library logs a cause once, when it begins:
/// whoever reads again and again keeps one reader.
class LineReader {
public:
    explicit LineReader(const SafePointer<GPIOOperator>& gpioOperator) : m_Operator(gpioOperator) {}

    /// The states of `lines`, in their order, from one batch read. Takes what LogBook keeps.
    std::vector<LineState> read(const std::vector<Line>& lines);

private:
    std::string causeOf(const Line& line, const std::vector<std::string>& records);

    SafePointer<GPIOOperator> m_Operator;
    std::map<std::pair<int, int>, std::string> m_Causes; // by group and bit
};
