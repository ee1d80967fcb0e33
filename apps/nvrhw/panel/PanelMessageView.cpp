#include "panel/PanelMessageView.h"

#include "print/Text.h"

#include <algorithm>

namespace {

constexpr int TEXT_COLUMN = 19;
constexpr int KIND_COLUMN = 11;

struct Kind {
    const char* word;
    Style style;
};
constexpr Kind KINDS[] = {{"ALARM", BAD}, {"normal", GOOD}, {"log", DOUBTFUL}};

} // namespace

void PanelMessageView::draw(int top, int rows, int& below) {
    const auto& messages = m_Model.messages;
    const int count = static_cast<int>(messages.size());
    int oldestEnd = 0; // of the messages that fill the rows when scrolled back to the first one
    for (int filled = 0; oldestEnd < count && filled < rows; ++oldestEnd) {
        filled += rowsOf(messages[static_cast<std::size_t>(oldestEnd)]);
    }
    below = std::clamp(below, 0, count - oldestEnd);
    int next = count - below;
    int used = 0;
    for (; next > 0 && used < rows; --next) {
        used += rowsOf(messages[static_cast<std::size_t>(next - 1)]);
    }
    int row = top + std::min(0, rows - used);
    for (int i = next; i < count - below; ++i) {
        const Event& message = messages[static_cast<std::size_t>(i)];
        drawMessage(row, top, message);
        row += rowsOf(message);
    }
}

int PanelMessageView::rowsOf(const Event& message) const {
    const std::wstring text = Text::decode(m_Model.textOf(message));
    return static_cast<int>(Text::wrap(text, m_Screen.columns() - TEXT_COLUMN - 1).size());
}

// Rows before `firstRow` are not drawn.
void PanelMessageView::drawMessage(int row, int firstRow, const Event& message) {
    const Kind& kind = KINDS[message.kind];
    if (row >= firstRow) {
        m_Screen.put(row, 1, message.receivedText(false), FAINT);
        m_Screen.put(row, KIND_COLUMN, kind.word, kind.style);
    }
    const std::wstring text = Text::decode(m_Model.textOf(message));
    for (const std::wstring& line : Text::wrap(text, m_Screen.columns() - TEXT_COLUMN - 1)) {
        if (row >= firstRow) {
            m_Screen.put(row, TEXT_COLUMN, line, PLAIN);
        }
        ++row;
    }
}
