#pragma once

#include "lines/LineFacts.h"
#include "panel/PanelMail.h"

#include <deque>
#include <string>
#include <vector>

/// What the panel knows of the board. It belongs to the panel's thread.
class PanelModel {
public:
    static constexpr std::size_t MOST_MESSAGES = 1000;

    explicit PanelModel(const nvrhw::Board& board);

    /// Takes in what the board has told; returns how many messages that were.
    int receive(const std::deque<PanelMessage>& mail);

    /// Looks at the outputs.
    void refresh();

    int countInputs(nvrhw::Input::State state) const;

    /// Outputs that are active or flashing.
    int countOutputsOn() const;

    /// Whether an output changes by itself.
    bool isBusy() const;

    const std::string machine; ///< its model, or which board it is when that is not known
    const std::vector<nvrhw::Input> inputs;
    std::vector<OutputView> outputs;   ///< with the mode that the panel's user has given each
    std::deque<PanelMessage> messages; ///< the oldest first
};
