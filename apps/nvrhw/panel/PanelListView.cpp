#include "panel/PanelListView.h"

#include "print/Text.h"

#include <algorithm>
#include <cwctype>
#include <utility>

namespace {

constexpr int HEADING_WIDTH = 8; // the name of the list stands above the first columns
constexpr int LEAST_WIDTH = 6;   // of a text that is cut

struct Cell {
    std::wstring text;
    int style;
    bool isNumber;
};

// The cells of an item. Where there may be no colours capitals tell what is bad.
std::vector<Cell> cellsOf(const Record& facts) {
    std::vector<Cell> cells;
    for (const Fact& fact : facts) {
        std::wstring text = Text::decode(fact.words());
        if (fact.narrow.rank < 0) {
            continue;
        }
        if (fact.narrow.title == "/") { // goes on with the column before it
            cells.back().text += L"/" + text;
            cells.back().isNumber = false;
            continue;
        }
        if (fact.style == BAD) {
            std::transform(text.begin(), text.end(), text.begin(), std::towupper);
        }
        const std::wstring mark = Text::decode(fact.narrow.mark);
        cells.push_back({mark + (mark.empty() ? L"" : L" ") + text, fact.style, fact.isNumber()});
    }
    return cells;
}

std::vector<PanelListView::Column> columnsOf(const std::vector<Record>& items) {
    std::vector<PanelListView::Column> columns;
    std::vector<bool> isFixed;
    for (const Fact& fact : items.empty() ? Record() : items.front()) {
        if (fact.narrow.rank >= 0 && fact.narrow.title != "/") {
            const int least = std::max(fact.narrow.width, Text::width(fact.narrow.title));
            const bool canShrink = !fact.isNumber() && fact.narrow.width == 0;
            columns.push_back({fact.narrow.title, fact.narrow.rank, least, canShrink});
            isFixed.push_back(fact.narrow.width > 0);
        }
    }
    for (const Record& item : items) {
        const std::vector<Cell> cells = cellsOf(item);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const int width = isFixed[i] ? 0 : Text::width(cells[i].text);
            columns[i].width = std::max(columns[i].width, width);
        }
    }
    if (columns.size() > 1) {
        columns[1].width = std::max(columns[1].width, HEADING_WIDTH - 1 - columns[0].width);
    }
    return columns;
}

} // namespace

PanelListView::PanelListView(PanelScreen& screen, int top, const PanelGrid& grid)
    : m_Screen(screen), m_Top(top), m_Grid(grid) {}

void PanelListView::drawRule(PanelScreen& screen, int row, const std::string& name) {
    const auto width = static_cast<std::size_t>(screen.columns());
    screen.put(row, 0, std::wstring(width, L'\u2500'), FAINT);
    screen.put(row, 1, " " + name + " ", STRONG);
}

void PanelListView::narrow(std::vector<Column>& columns, int width) {
    const auto leastOf = [](const Column& column) {
        return column.canShrink ? std::min(column.width, LEAST_WIDTH) : column.width;
    };
    std::vector<Column*> byRank; // those there are, the first to go first
    int excess = 1 - width;
    int least = 1 - width;
    for (Column& column : columns) {
        if (column.width > 0) {
            byRank.push_back(&column);
            excess += column.width + 1;
            least += leastOf(column) + 1;
        }
    }
    std::stable_sort(byRank.begin(), byRank.end(),
                     [](const Column* a, const Column* b) { return a->rank > b->rank; });
    for (Column* column : byRank) {
        if (least > 0 && column->rank > 0) {
            least -= leastOf(*column) + 1;
            excess -= std::exchange(column->width, 0) + 1;
        }
    }
    for (Column* column : byRank) {
        const int taken = std::clamp(excess, 0, column->width - leastOf(*column));
        column->width -= taken;
        excess -= taken;
    }
}

void PanelListView::draw(const std::string& name, const std::vector<Record>& items,
                         bool isHere) const {
    std::vector<Column> columns = columnsOf(items);
    narrow(columns, m_Screen.columns() / m_Grid.columns());
    drawTitles(name, columns);
    for (int item = m_Grid.first(); item < m_Grid.last(); ++item) {
        drawItem(item, isHere && item == m_Grid.selected(), columns,
                 items[static_cast<std::size_t>(item)]);
    }
}

void PanelListView::drawTitles(const std::string& name, const std::vector<Column>& columns) const {
    const int row = m_Top - 1;
    drawRule(m_Screen, row, name);
    for (int i = 0; i < m_Grid.columns(); ++i) {
        int column = left(i) + 1;
        for (const Column& each : columns) {
            if (!each.title.empty() && each.width > 0) {
                m_Screen.put(row, column - 1, " " + each.title + " ", FAINT);
            }
            column += each.width == 0 ? 0 : each.width + 1;
        }
    }
    std::wstring hidden;
    if (m_Grid.above() > 0) {
        hidden += L" \u2191" + std::to_wstring(m_Grid.above());
    }
    if (m_Grid.below() > 0) {
        hidden += L" \u2193" + std::to_wstring(m_Grid.below());
    }
    m_Screen.put(row, m_Screen.columns() - Text::width(hidden), hidden, STRONG);
}

void PanelListView::drawItem(int item, bool isSelected, const std::vector<Column>& columns,
                             const Record& facts) const {
    const int row = m_Top + (item - m_Grid.first()) / m_Grid.columns();
    const int mark = isSelected ? PanelScreen::REVERSED : 0;
    int column = left(item % m_Grid.columns());
    m_Screen.put(row, column, isSelected ? L"\u25B8" : L" ", PLAIN + mark);
    ++column;
    const std::vector<Cell> cells = cellsOf(facts);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int width = columns[i].width;
        if (width == 0) {
            continue;
        }
        std::wstring text = cells[i].text;
        if (cells[i].isNumber) {
            text.insert(0, static_cast<std::size_t>(std::max(0, width - Text::width(text))), L' ');
        }
        m_Screen.put(row, column, Text::fit(text, width) + L" ", cells[i].style + mark);
        column += width + 1;
    }
}

int PanelListView::left(int gridColumn) const {
    return gridColumn * (m_Screen.columns() / m_Grid.columns());
}
