#include "panel/PanelFocus.h"

#include <algorithm>
#include <curses.h>
#include <utility>

namespace {

constexpr std::size_t LONGEST_ANSWER = 20;
constexpr int ESCAPE = 27;
constexpr int DELETE = 127;

} // namespace

void PanelGrid::arrange(int count, int columns, int visibleRows) {
    m_Count = count;
    m_Columns = columns;
    m_VisibleRows = visibleRows;
    select(m_Selected);
}

void PanelGrid::move(int right, int down) {
    const int target = m_Selected + right + down * m_Columns;
    if (target >= 0 && target < m_Count) {
        select(target);
    } else if (down > 0 && m_Selected / m_Columns < (m_Count - 1) / m_Columns) {
        select(m_Count - 1); // the last row is shorter
    }
}

int PanelGrid::last() const { return std::min(m_Count, (m_TopRow + m_VisibleRows) * m_Columns); }

void PanelGrid::select(int item) {
    m_Selected = std::clamp(item, 0, std::max(m_Count - 1, 0));
    const int row = m_Selected / m_Columns;
    const int rows = (m_Count + m_Columns - 1) / m_Columns;
    m_TopRow = std::clamp(m_TopRow, row - m_VisibleRows + 1, row);
    m_TopRow = std::clamp(m_TopRow, 0, std::max(rows - m_VisibleRows, 0));
}

void PanelPrompt::open(const std::string& question, const Accept& accept) {
    m_Question = question;
    m_Answer.clear();
    m_Accept = accept;
}

void PanelPrompt::press(int key) {
    if (key == '\r' || key == '\n' || key == KEY_ENTER) {
        if (!m_Answer.empty()) {
            m_Accept(m_Answer);
        }
        m_Accept = nullptr;
    } else if (key == ESCAPE) {
        m_Accept = nullptr;
    } else if (key == KEY_BACKSPACE || key == '\b' || key == DELETE) {
        if (!m_Answer.empty()) {
            m_Answer.pop_back();
        }
    } else if (key >= ' ' && key < DELETE && m_Answer.size() < LONGEST_ANSWER) {
        m_Answer += static_cast<char>(key);
    }
}
