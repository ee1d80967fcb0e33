#pragma once

#include "panel/PanelInput.h"
#include "panel/PanelMailbox.h"
#include "panel/PanelMessage.h"
#include "panel/PanelOutput.h"

#include <deque>
#include <string>
#include <vector>

/// What the panel knows of the board. It belongs to the panel's thread.
class PanelModel {
public:
    static constexpr std::size_t MOST_MESSAGES = 1000;

    /// Takes the lines from the configuration.
    explicit PanelModel(const BoardLines& lines);

    /// Takes in what the library has told; returns how many messages came to be listed. That an
    /// input is normal when it is first heard of is no event.
    int receive(const PanelMailbox::Mail& mail);

    int countInputs(PanelInput::State state) const;

    /// AlarmOutputs that are active or flashing.
    int countOutputsOn() const;

    /// What a message says, with the input's name.
    std::string textOf(const PanelMessage& message) const;

    std::vector<PanelInput> inputs;
    std::vector<PanelOutput> outputs;
    std::deque<PanelMessage> messages; ///< the oldest first
    std::string machine;               ///< the board's name

private:
    bool isEvent(const PanelMessage& message) const;
    void setFlag(int id, int flag);
};
