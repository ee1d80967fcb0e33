#include "panel/PanelModel.h"

#include <algorithm>

PanelModel::PanelModel(const BoardLines& lines) {
    for (const Line& line : lines.inputs()) {
        inputs.push_back({line});
    }
    for (const Line& line : lines.outputs()) {
        outputs.push_back({line});
    }
}

int PanelModel::receive(const PanelMailbox::Mail& mail) {
    int count = 0;
    for (const PanelMessage& message : mail.messages) {
        if (isEvent(message)) {
            messages.push_back(message);
            ++count;
        }
        if (message.kind != PanelMessage::LOG) {
            setFlag(message.inputId, message.kind == PanelMessage::ALARM ? 1 : 0);
        }
    }
    for (const auto& [id, flag] : mail.flags) {
        setFlag(id, flag);
    }
    while (messages.size() > MOST_MESSAGES) {
        messages.pop_front();
    }
    return count;
}

int PanelModel::countInputs(PanelInput::State state) const {
    return static_cast<int>(
        std::count_if(inputs.begin(), inputs.end(),
                      [state](const PanelInput& input) { return input.state() == state; }));
}

int PanelModel::countOutputsOn() const {
    return static_cast<int>(
        std::count_if(outputs.begin(), outputs.end(), [](const PanelOutput& output) {
            return output.isActive() || output.operation == PanelOutput::FLASHING;
        }));
}

std::string PanelModel::textOf(const PanelMessage& message) const {
    if (message.kind == PanelMessage::LOG) {
        return message.text;
    }
    const auto input = std::find_if(inputs.begin(), inputs.end(), [&](const PanelInput& each) {
        return each.line.id == message.inputId;
    });
    const bool hasName = input != inputs.end() && !input->line.name.empty();
    return "input " + std::to_string(message.inputId) + (hasName ? "  " + input->line.name : "");
}

bool PanelModel::isEvent(const PanelMessage& message) const {
    return message.kind != PanelMessage::NORMAL ||
           std::any_of(inputs.begin(), inputs.end(), [&](const PanelInput& input) {
               return input.line.id == message.inputId && input.flag >= 0;
           });
}

void PanelModel::setFlag(int id, int flag) {
    for (PanelInput& input : inputs) {
        if (input.line.id == id) {
            input.flag = flag;
        }
    }
}
