#pragma once

#include "panel/PanelFocus.h"
#include "panel/PanelScreen.h"
#include "print/Fact.h"

#include <string>
#include <vector>

/// Draws what is known of lines as a grid of items, each with the same columns, below a rule that
/// carries the name of the list and the titles of the columns.
class PanelListView {
public:
    PanelListView(PanelScreen& screen, int top, const PanelGrid& grid);

    /// Draws the items to be seen, of which the selected one is marked if the user is here. A
    /// column is left out when there is no room for it.
    void draw(const std::string& name, const std::vector<Record>& items, bool isHere) const;

    /// A rule over the whole width of the screen.
    static void drawRule(PanelScreen& screen, int row, const std::string& name);

    /// A column as the facts describe it.
    struct Column {
        std::string title;
        int rank;  ///< the highest is left out first
        int width; ///< 0: it is left out
        bool canShrink;
    };

    /// Takes from the widths what is more than `width`, the mark of the selected item included.
    static void narrow(std::vector<Column>& columns, int width);

private:
    void drawTitles(const std::string& name, const std::vector<Column>& columns) const;
    void drawItem(int item, bool isSelected, const std::vector<Column>& columns,
                  const Record& facts) const;
    int left(int gridColumn) const;

    PanelScreen& m_Screen;
    const int m_Top;
    const PanelGrid& m_Grid;
};
