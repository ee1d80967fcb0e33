// An input is unknown until its first message; from then on it is what the last message said,
// alarm or normal, for that is what an application knows: never may a level that no message has
// told yet be shown as an alarm. While its line cannot be read it is unreadable, and comes back as
// the last message has it. Messages move it (receive(), which also takes flags whose messages had
// no room in the mailbox), and readings (judge()). An output is what its line, its mode and the
// library's record of it say, and nobody but the library moves it.
//
// There is no lock: only the panel's thread has the model. The library's threads reach it by way
// of AlarmMailbox, whose lock is held for a moment.

#include "panel/PanelModel.h"

#include <algorithm>

PanelModel::PanelModel(const BoardLines& lines) {
    for (const Line& line : lines.inputs()) {
        inputs.emplace_back().line = line;
    }
    for (const Line& line : lines.outputs()) {
        outputs.emplace_back().line = line;
    }
}

int PanelModel::receive(const AlarmMailbox::Mail& mail) {
    int count = 0;
    for (const Event& message : mail.events) {
        if (message.kind != Event::NORMAL || flagOf(message.inputId) >= 0) {
            messages.push_back(message);
            ++count;
        }
        if (message.kind != Event::LOG) {
            m_Flags[message.inputId] = message.kind == Event::ALARM ? 1 : 0;
        }
    }
    for (const auto& [id, flag] : mail.flags) {
        m_Flags[id] = flag;
    }
    while (messages.size() > MOST_MESSAGES) {
        messages.pop_front();
    }
    return count;
}

void PanelModel::judge() {
    for (InputState& input : inputs) {
        input.judgeBy(flagOf(input.line.id));
    }
}

int PanelModel::countInputs(InputState::State state) const {
    return static_cast<int>(
        std::count_if(inputs.begin(), inputs.end(),
                      [state](const InputState& input) { return input.state == state; }));
}

int PanelModel::countOutputsOn() const {
    return static_cast<int>(
        std::count_if(outputs.begin(), outputs.end(), [](const OutputState& output) {
            return output.isActive() || output.operation == OutputState::FLASHING;
        }));
}

std::string PanelModel::textOf(const Event& message) const {
    if (message.kind == Event::LOG) {
        return message.text;
    }
    const auto input = std::find_if(inputs.begin(), inputs.end(), [&](const InputState& each) {
        return each.line.id == message.inputId;
    });
    const bool hasName = input != inputs.end() && !input->line.name.empty();
    return "input " + std::to_string(message.inputId) + (hasName ? "  " + input->line.name : "");
}

int PanelModel::flagOf(int id) const {
    const auto found = m_Flags.find(id);
    return found == m_Flags.end() ? -1 : found->second;
}
