#pragma once

#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"

/// Draws the newest messages in `rows` rows from `top` on, the last one at the bottom; long ones
/// take several rows. Leaves out the `below` newest ones, of which there are only as many as leave
/// the rows full: `below` becomes that number.
void drawMessages(PanelScreen& screen, const PanelModel& model, int top, int rows, int& below);
