#include "panel/PanelListView.h"

#include "print/Text.h"

#include <utility>

PanelListView::PanelListView(PanelScreen& screen, int top, const PanelGrid& grid,
                             std::vector<Column> columns)
    : m_Screen(screen), m_Top(top), m_Grid(grid), m_Columns(std::move(columns)) {}

void PanelListView::drawRule(PanelScreen& screen, int row, const std::string& name) {
    const auto width = static_cast<std::size_t>(screen.columns());
    screen.put(row, 0, std::wstring(width, L'\u2500'), PanelScreen::FAINT);
    screen.put(row, 1, " " + name + " ", PanelScreen::STRONG);
}

void PanelListView::drawRule(const std::string& name) const {
    const int row = m_Top - 1;
    drawRule(m_Screen, row, name);
    for (int i = 0; i < m_Grid.columns(); ++i) {
        int column = left(i) + 1;
        for (const Column& each : m_Columns) {
            if (!each.title.empty()) {
                m_Screen.put(row, column - 1, " " + each.title + " ", PanelScreen::FAINT);
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
    m_Screen.put(row, m_Screen.columns() - Text::width(hidden), hidden, PanelScreen::STRONG);
}

void PanelListView::drawItem(int item, bool isSelected, const std::vector<Cell>& cells) const {
    if (item < m_Grid.first() || item >= m_Grid.last()) {
        return;
    }
    const int row = m_Top + (item - m_Grid.first()) / m_Grid.columns();
    const int mark = isSelected ? PanelScreen::REVERSED : 0;
    int column = left(item % m_Grid.columns());
    m_Screen.put(row, column, isSelected ? L"\u25B8" : L" ", PanelScreen::PLAIN + mark);
    ++column;
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        const int width = m_Columns[i].width;
        if (width > 0) {
            m_Screen.put(row, column, Text::fit(cells[i].text, width) + L" ",
                         cells[i].style + mark);
            column += width + 1;
        }
    }
}

int PanelListView::left(int gridColumn) const {
    return gridColumn * (m_Screen.columns() / m_Grid.columns());
}
