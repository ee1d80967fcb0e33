#include "panel/PanelModel.h"

#include <algorithm>

namespace {

std::string machineOf(const nvrhw::Board& board) {
    const std::string model = board.machine().getModel();
    return model.empty() ? board.directory() : model;
}

} // namespace

PanelModel::PanelModel(const nvrhw::Board& board)
    : machine(machineOf(board)), inputs(board.inputs()) {
    for (const nvrhw::Output& output : board.outputs()) {
        outputs.push_back({output});
    }
    refresh();
}

int PanelModel::receive(const std::deque<PanelMessage>& mail) {
    messages.insert(messages.end(), mail.begin(), mail.end());
    while (messages.size() > MOST_MESSAGES) {
        messages.pop_front();
    }
    return static_cast<int>(mail.size());
}

void PanelModel::refresh() {
    for (OutputView& view : outputs) {
        view.state = view.output.state();
    }
}

int PanelModel::countInputs(nvrhw::Input::State state) const {
    return static_cast<int>(
        std::count_if(inputs.begin(), inputs.end(),
                      [state](const nvrhw::Input& input) { return input.state() == state; }));
}

int PanelModel::countOutputsOn() const {
    return static_cast<int>(
        std::count_if(outputs.begin(), outputs.end(), [](const OutputView& view) {
            return view.state.isActive || view.state.operation == nvrhw::Output::Flash;
        }));
}

bool PanelModel::isBusy() const {
    return std::any_of(outputs.begin(), outputs.end(),
                       [](const OutputView& view) { return view.changesByItself(); });
}
