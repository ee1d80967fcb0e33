#include "panel/PanelLayout.h"

#include <algorithm>

namespace {

constexpr int FRAME_ROWS = 6; // title, three rules, the row about the selected line, keys
constexpr int LEAST_INPUT_COLUMNS = 39;

} // namespace

// As few columns of inputs as let all lines be seen, so that their names have room.
PanelLayout::PanelLayout(int rows, int columns, int inputs, int outputs) {
    const int leastMessageRows = std::clamp((rows - FRAME_ROWS + 2) / 4, 1, 5);
    const int listRows = rows - FRAME_ROWS - leastMessageRows;
    const int mostColumns = columns / LEAST_INPUT_COLUMNS;
    const auto rowsNeeded = [&] { return std::max(1, (inputs + inputColumns - 1) / inputColumns); };
    inputColumns = 1;
    while (inputColumns < mostColumns && rowsNeeded() + std::max(1, outputs) > listRows) {
        ++inputColumns;
    }
    outputRows = std::max({1, std::min(outputs, listRows / 3), //
                           std::min(outputs, listRows - rowsNeeded())});
    inputRows = std::min(rowsNeeded(), listRows - outputRows);
    messageRows = rows - FRAME_ROWS - inputRows - outputRows;
}
