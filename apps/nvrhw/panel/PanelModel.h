#pragma once

#include "lines/AlarmMailbox.h"
#include "lines/BoardLines.h"

#include <deque>
#include <map>
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
    int receive(const AlarmMailbox::Mail& mail);

    /// Takes in that the levels of all lines have been read anew.
    void judge();

    int countInputs(InputState::State state) const;

    /// Outputs that are active or flashing.
    int countOutputsOn() const;

    /// What a message says, with the input's name.
    std::string textOf(const Event& message) const;

    std::vector<InputState> inputs;
    std::vector<OutputState> outputs;
    std::deque<Event> messages; ///< the oldest first
    std::string machine;        ///< the board's name

private:
    int flagOf(int id) const;

    std::map<int, int> m_Flags; // of the last message of each input that has sent one
};
