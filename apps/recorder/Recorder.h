#pragma once

#include <nlohmann/json.hpp>
#include <nvrhw/nvrhw.h>

/// Flashes outputs as the inputs change, and reports all that happens as lines of JSON.
class Recorder {
public:
    using Report = std::function<void(const std::string& line)>; ///< called in the board's thread

    /// A rule is "INPUT:OUTPUT", by names or ids: the output flashes while the input is in alarm or
    /// cannot be read. Raises nvrhw::Error.
    Recorder(const nvrhw::Board& board, const std::vector<std::string>& rules, Report report)
        : m_Report(std::move(report)) {
        for (const std::string& rule : rules) {
            const std::size_t colon = rule.find(':');
            if (colon == std::string::npos) {
                throw nvrhw::Error(nvrhw::Error::BadArgument,
                                   "a rule is INPUT:OUTPUT, not " + rule);
            }
            m_Rules.emplace_back(board.input(rule.substr(0, colon)).id,
                                 board.output(rule.substr(colon + 1)));
        }
        m_Outputs = board.onOutput([this](const nvrhw::OutputChange& change) {
            tell("output", change.output, toText(change.kind), change);
        });
        m_Inputs = board.onInput([this](const nvrhw::InputChange& change) {
            tell("input", change.input, toText(change.state), change);
            for (const auto& [input, output] : m_Rules) {
                if (input == change.input.id) {
                    change.state == nvrhw::Input::Normal
                        ? output.rest()
                        : output.flash(std::chrono::milliseconds(500));
                }
            }
        });
    }

private:
    template <typename Line, typename Change>
    void tell(const char* kind, const Line& line, const char* state, const Change& change) const {
        const auto time = change.time.wall.time_since_epoch().count(); // microseconds
        const nlohmann::json told = {{"time", time},
                                     {kind, line.id},
                                     {"name", line.name},
                                     {"state", state},
                                     {"leftOut", change.leftOut},
                                     {"cause", change.cause.text()}};
        m_Report(told.dump());
    }

    std::vector<std::pair<int, nvrhw::Output>> m_Rules; // an input's id and what it switches
    const Report m_Report;
    nvrhw::Registration m_Outputs, m_Inputs; // last, so that they end before what they use
};
