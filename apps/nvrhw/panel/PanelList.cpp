#include "panel/PanelList.h"

#include "application/Moment.h"
#include "print/Text.h"

#include <algorithm>
#include <cwctype>
#include <utility>

namespace {

constexpr int HEADING_WIDTH = 8; // the name of the list stands above the first columns
constexpr int LEAST_WIDTH = 6;   // of a text that is cut

constexpr int CLOCK_WIDTH = 8;
constexpr int TIME_COLUMN = 1;
constexpr int KIND_COLUMN = 11;
constexpr int TEXT_COLUMN = 19;

struct Kind {
    const char* word;
    Style style;
};
constexpr Kind KINDS[] = {{"ALARM", BAD}, {"normal", GOOD}, {"log", DOUBTFUL}};

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
        if (!fact.narrow.mark.empty()) {
            text.insert(0, Text::decode(fact.narrow.mark) + L" ");
        }
        cells.push_back({text, fact.style, fact.isNumber()});
    }
    return cells;
}

std::vector<PanelColumn> columnsOf(const std::vector<Record>& items) {
    std::vector<PanelColumn> columns;
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

void drawTitles(PanelScreen& screen, int row, int left, const std::vector<PanelColumn>& columns) {
    for (const PanelColumn& column : columns) {
        if (!column.title.empty() && column.width > 0) {
            screen.put(row, left - 1, " " + column.title + " ", FAINT);
        }
        left += column.width == 0 ? 0 : column.width + 1;
    }
}

void drawItem(PanelScreen& screen, int row, int left, bool isSelected,
              const std::vector<PanelColumn>& columns, const Record& facts) {
    const int mark = isSelected ? PanelScreen::REVERSED : 0;
    screen.put(row, left, isSelected ? L"\u25B8" : L" ", PLAIN + mark);
    ++left;
    const std::vector<Cell> cells = cellsOf(facts);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int width = columns[i].width;
        if (width > 0) {
            const int lead = cells[i].isNumber ? width - Text::width(cells[i].text) : 0;
            const std::wstring blanks(static_cast<std::size_t>(std::max(0, lead)), L' ');
            screen.put(row, left, Text::fit(blanks + cells[i].text, width) + L" ",
                       cells[i].style + mark);
            left += width + 1;
        }
    }
}

} // namespace

void PanelColumn::narrow(std::vector<PanelColumn>& columns, int width) {
    const auto leastOf = [](const PanelColumn& column) {
        return column.canShrink ? std::min(column.width, LEAST_WIDTH) : column.width;
    };
    std::vector<PanelColumn*> byRank; // those there are, the first to go first
    int excess = 1 - width;
    int least = 1 - width;
    for (PanelColumn& column : columns) {
        if (column.width > 0) {
            byRank.push_back(&column);
            excess += column.width + 1;
            least += leastOf(column) + 1;
        }
    }
    std::stable_sort(byRank.begin(), byRank.end(),
                     [](const PanelColumn* a, const PanelColumn* b) { return a->rank > b->rank; });
    for (PanelColumn* column : byRank) {
        if (least > 0 && column->rank > 0) {
            least -= leastOf(*column) + 1;
            excess -= std::exchange(column->width, 0) + 1;
        }
    }
    for (PanelColumn* column : byRank) {
        const int taken = std::clamp(excess, 0, column->width - leastOf(*column));
        column->width -= taken;
        excess -= taken;
    }
}

void drawList(PanelScreen& screen, int top, const PanelGrid& grid, const std::string& name,
              const std::vector<Record>& items, bool isHere) {
    std::vector<PanelColumn> columns = columnsOf(items);
    const int itemWidth = screen.columns() / grid.columns();
    PanelColumn::narrow(columns, itemWidth);
    drawRule(screen, top - 1, name);
    for (int i = 0; i < grid.columns(); ++i) {
        drawTitles(screen, top - 1, i * itemWidth + 1, columns);
    }
    const std::wstring above = L" \u2191" + std::to_wstring(grid.above());
    const std::wstring below = L" \u2193" + std::to_wstring(grid.below());
    const std::wstring hidden = (grid.above() > 0 ? above : L"") + (grid.below() > 0 ? below : L"");
    screen.put(top - 1, screen.columns() - Text::width(hidden), hidden, STRONG);
    for (int item = grid.first(); item < grid.last(); ++item) {
        const int place = item - grid.first();
        drawItem(screen, top + place / grid.columns(), place % grid.columns() * itemWidth,
                 isHere && item == grid.selected(), columns, items[static_cast<std::size_t>(item)]);
    }
}

void drawRule(PanelScreen& screen, int row, const std::string& name) {
    const auto width = static_cast<std::size_t>(screen.columns());
    screen.put(row, 0, std::wstring(width, L'\u2500'), FAINT);
    screen.put(row, 1, " " + name + " ", STRONG);
}

void drawMessages(PanelScreen& screen, const PanelModel& model, int top, int rows, int& below) {
    const int count = static_cast<int>(model.messages.size());
    const auto at = [&](int i) -> const PanelMessage& {
        return model.messages[static_cast<std::size_t>(i)];
    };
    const auto linesOf = [&](int i) {
        return Text::wrap(Text::decode(at(i).text), screen.columns() - TEXT_COLUMN - 1);
    };
    int oldestEnd = 0; // of the messages that fill the rows when scrolled back to the first one
    for (int filled = 0; oldestEnd < count && filled < rows; ++oldestEnd) {
        filled += static_cast<int>(linesOf(oldestEnd).size());
    }
    below = std::clamp(below, 0, count - oldestEnd);
    int next = count - below;
    int used = 0;
    for (; next > 0 && used < rows; --next) {
        used += static_cast<int>(linesOf(next - 1).size());
    }
    // The first rows of a long one may be above the top, but not of the only one.
    int row = top + (next == count - below - 1 ? 0 : std::min(0, rows - used));
    for (int i = next; i < count - below; ++i) {
        if (row >= top) {
            screen.put(row, TIME_COLUMN, nvrhw::clockText(at(i).time).substr(0, CLOCK_WIDTH),
                       FAINT);
            screen.put(row, KIND_COLUMN, KINDS[at(i).kind].word, KINDS[at(i).kind].style);
        }
        for (const std::wstring& line : linesOf(i)) {
            screen.put(row, TEXT_COLUMN, row >= top && row < top + rows ? line : L"", PLAIN);
            ++row;
        }
    }
}
