#pragma once

#include <functional>
#include <nvrhw/nvrhw.h>
#include <string>
#include <vector>

/// Switches outputs as the inputs change, and reports all that happens as lines of JSON.
class Recorder {
public:
    using Report = std::function<void(const std::string& line)>; ///< called in the board's thread

    /// A rule is "INPUT:OUTPUT:hold" or "INPUT:OUTPUT:flash", by names or ids: what the output does
    /// while the input is in alarm or cannot be read. Raises nvrhw::Error.
    Recorder(const nvrhw::Board& board, const std::vector<std::string>& rules, Report report);

private:
    struct Rule {
        int input;
        nvrhw::Output output;
        bool isFlashing;
    };
    void update(const nvrhw::InputChange& change) const;

    std::vector<Rule> m_Rules;
    const Report m_Report;
    nvrhw::Registration m_Outputs, m_Inputs; // last, so that they end before what they use
};
