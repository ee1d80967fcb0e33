#include "lines/LineReader.h"

#include "print/LogBook.h"

namespace {

// How the library's log record about a line begins; the cause follows.
std::string recordStart(const Line& line) {
    return "group " + std::to_string(line.group) + ", bit " + std::to_string(line.bit) +
           " cannot be read: ";
}

} // namespace

Json LineState::json() const {
    Json object{{"id", line.id},
                {"name", line.name},
                {"bank", line.group},
                {"bit", line.bit},
                {"validLevel", line.validLevel},
                {"level", isReadable() ? Json(level) : Json()}};
    if (!isReadable()) {
        object["cause"] = cause;
    }
    return object;
}

std::vector<LineState> LineReader::read(const std::vector<Line>& lines) {
    std::vector<LineState> found;
    std::vector<IOInfo> requests;
    for (const Line& line : lines) {
        IOInfo request;
        request.setId(static_cast<int>(found.size())); // several lines may have the same id
        request.setGroupId(line.group);
        request.setBitPosion(line.bit);
        requests.push_back(request);
        found.push_back({line, -1, ""});
    }
    std::vector<IOState> states;
    m_Operator->get(requests, states);
    for (const IOState& state : states) {
        found[static_cast<std::size_t>(state.getId())].level = state.getLevel();
    }
    const std::vector<std::string> records = LogBook::take();
    for (LineState& state : found) {
        if (state.isReadable()) {
            m_Causes.erase({state.line.group, state.line.bit});
        } else {
            state.cause = causeOf(state.line, records);
        }
    }
    return found;
}

std::string LineReader::causeOf(const Line& line, const std::vector<std::string>& records) {
    std::string& cause = m_Causes[{line.group, line.bit}];
    const std::string start = recordStart(line);
    for (const std::string& record : records) {
        if (record.compare(0, start.size(), start) == 0) {
            cause = record.substr(start.size());
        }
    }
    return cause.empty() ? "cannot be read" : cause;
}
