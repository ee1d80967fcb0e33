#include "Recorder.h"

#include <nlohmann/json.hpp>
#include <sstream>

template <typename Line, typename Change>
static std::string toJson(const char* kind, const Line& line, const std::string& state,
                          const Change& change) {
    const auto time = change.time.wall.time_since_epoch().count(); // microseconds
    nlohmann::json told = {{"time", time}, {kind, line.id}, {"name", line.name}, {"state", state}};
    if (change.cause) {
        told["cause"] = change.cause.text();
    }
    if (change.leftOut > 0) {
        told["leftOut"] = change.leftOut;
    }
    return told.dump();
}

Recorder::Recorder(const nvrhw::Board& board, const std::vector<std::string>& rules, Report report)
    : m_Report(std::move(report)) {
    for (const std::string& rule : rules) {
        std::istringstream text(rule);
        std::string input, output, action;
        std::getline(std::getline(std::getline(text, input, ':'), output, ':'), action);
        if (action != "hold" && action != "flash") {
            throw nvrhw::Error(nvrhw::Error::BadArgument, "no INPUT:OUTPUT:hold|flash: " + rule);
        }
        m_Rules.push_back({board.input(input).id, board.output(output), action == "flash"});
    }
    m_Outputs = board.onOutput([this](const nvrhw::OutputChange& change) {
        const std::string state = toText(change.operation) + std::string(" ") + toText(change.kind);
        m_Report(toJson("output", change.output, state, change));
    });
    m_Inputs = board.onInput([this](const nvrhw::InputChange& change) { update(change); });
}

void Recorder::update(const nvrhw::InputChange& change) const {
    m_Report(toJson("input", change.input, toText(change.state), change));
    for (const Rule& rule : m_Rules) {
        if (rule.input == change.input.id && change.state == nvrhw::Input::Normal) {
            rule.output.rest();
        } else if (rule.input == change.input.id) {
            rule.isFlashing ? rule.output.flash(std::chrono::milliseconds(500))
                            : rule.output.hold();
        }
    }
}
