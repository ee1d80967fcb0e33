#pragma once

#include "panel/PanelGrid.h"
#include "panel/PanelScreen.h"

#include <string>
#include <vector>

/// Draws a list of lines as a grid of items, each with the same columns, below a rule that carries
/// the name of the list and the titles of the columns.
class PanelListView {
public:
    struct Column {
        std::string title;
        int width; ///< 0: is left out
    };
    struct Cell {
        std::wstring text;
        int style = PanelScreen::PLAIN;
    };

    PanelListView(PanelScreen& screen, int top, const PanelGrid& grid, std::vector<Column> columns);

    void drawRule(const std::string& name) const;

    /// Draws the item when it is among those to be seen.
    void drawItem(int item, bool isSelected, const std::vector<Cell>& cells) const;

    /// A rule over the whole width of the screen.
    static void drawRule(PanelScreen& screen, int row, const std::string& name);

private:
    int left(int gridColumn) const;

    PanelScreen& m_Screen;
    const int m_Top;
    const PanelGrid& m_Grid;
    const std::vector<Column> m_Columns;
};
