#pragma once

#include "panel/PanelGrid.h"
#include "panel/PanelPrompt.h"

#include <string>

/// What its user has before them: the selected line, how far back the messages are, what is asked.
struct PanelFocus {
    enum List { INPUTS, OUTPUTS };

    List list = INPUTS;
    PanelGrid inputs{};
    PanelGrid outputs{};
    int messagesBelow = 0; ///< rows between the last one to be seen and the newest
    bool isHelp = false;
    PanelPrompt prompt{};
    std::string note{}; ///< the answer to the last key

    PanelGrid& grid() { return list == INPUTS ? inputs : outputs; }
};
