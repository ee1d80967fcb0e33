#pragma once

#include "panel/PanelFocus.h"
#include "panel/PanelModel.h"
#include "panel/PanelScreen.h"

/// How the rows of the terminal are shared out. From top to bottom: a title, the inputs and the
/// outputs and the messages, each below a rule, a row about the selected line, a row of keys.
struct PanelLayout {
    static constexpr int LEAST_COLUMNS = 40;
    static constexpr int LEAST_ROWS = 10;

    /// For a terminal that is large enough.
    PanelLayout(int rows, int columns, int inputs, int outputs);

    int inputColumns;
    int inputRows;
    int outputRows;
    int messageRows;

    int inputTop() const { return 2; }
    int outputTop() const { return inputTop() + inputRows + 1; }
    int messageTop() const { return outputTop() + outputRows + 1; }
    int detailRow() const { return messageTop() + messageRows; }
    int keyRow() const { return detailRow() + 1; }
};

/// Draws what the panel knows, as far as its user looks at it.
class PanelView {
public:
    /// Keeps all three.
    PanelView(PanelScreen& screen, const PanelModel& model, PanelFocus& focus)
        : m_Screen(screen), m_Model(model), m_Focus(focus) {}

    /// Draws the whole picture; the lists in `focus` take the shape that the screen gives them.
    void draw();

    /// Whether the screen is large enough for the lines.
    bool isShown() const {
        return m_Screen.rows() >= PanelLayout::LEAST_ROWS &&
               m_Screen.columns() >= PanelLayout::LEAST_COLUMNS;
    }

private:
    void drawTooSmall();
    void drawHelp();
    void drawBoard(const PanelLayout& layout);
    void drawTitle();
    void drawDetail(int row);
    void drawPrompt(int row);
    void drawKeys(int row);

    PanelScreen& m_Screen;
    const PanelModel& m_Model;
    PanelFocus& m_Focus;
};
