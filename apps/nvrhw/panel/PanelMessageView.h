#pragma once

#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"

/// Draws the newest messages, the last one at the bottom; long ones take several rows.
class PanelMessageView {
public:
    PanelMessageView(PanelScreen& screen, const PanelModel& model)
        : m_Screen(screen), m_Model(model) {}

    /// Fills `rows` rows from `top` on, leaving out the `below` newest messages. Of those there are
    /// only as many as leave the rows full: `below` becomes that number.
    void draw(int top, int rows, int& below);

private:
    int rowsOf(const Event& message) const;
    void drawMessage(int row, int firstRow, const Event& message);

    PanelScreen& m_Screen;
    const PanelModel& m_Model;
};
