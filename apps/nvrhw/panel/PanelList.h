#pragma once

#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"

#include <string>
#include <vector>

/// A column of a list, as the facts describe it.
struct PanelColumn {
    std::string title;
    int rank;  ///< the highest is left out first
    int width; ///< 0: it is left out
    bool canShrink;

    /// Takes from the widths what is more than `width`, the mark of the selected item included.
    static void narrow(std::vector<PanelColumn>& columns, int width);
};

/// Draws what is known of lines as a grid of items below a rule, which carries the name of the list
/// and the titles of the columns. The selected item is marked if the user is here.
void drawList(PanelScreen& screen, int top, const PanelGrid& grid, const std::string& name,
              const std::vector<Record>& items, bool isHere);

/// A rule over the whole width of the screen.
void drawRule(PanelScreen& screen, int row, const std::string& name);

/// Draws the newest messages in `rows` rows from `top` on, the last one at the bottom; long ones
/// take several rows. Leaves out the `below` newest ones, of which there are only as many as leave
/// the rows full: `below` becomes that number.
void drawMessages(PanelScreen& screen, const PanelModel& model, int top, int rows, int& below);
