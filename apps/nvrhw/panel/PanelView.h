#pragma once

#include "panel/PanelFocus.h"
#include "panel/PanelLayout.h"
#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"

/// Draws what the panel knows, as far as its user looks at it.
class PanelView {
public:
    /// Keeps all three.
    PanelView(PanelScreen& screen, const PanelModel& model, PanelFocus& focus)
        : m_Screen(screen), m_Model(model), m_Focus(focus) {}

    /// Draws the whole picture; the lists in `focus` take the shape that the screen gives them.
    void draw();

    /// Whether the screen is large enough for the lines.
    bool isShown() const;

private:
    void drawTooSmall();
    void drawHelp();
    void drawBoard(const PanelLayout& layout);
    void drawTitle();
    void drawMessages(const PanelLayout& layout);
    void drawDetail(int row);
    void drawPrompt(int row);
    void drawKeys(int row);

    PanelScreen& m_Screen;
    const PanelModel& m_Model;
    PanelFocus& m_Focus;
};
