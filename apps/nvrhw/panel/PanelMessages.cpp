#include "panel/PanelMessages.h"

#include "print/Text.h"

#include <algorithm>

namespace {

constexpr int TIME_COLUMN = 1;
constexpr int KIND_COLUMN = 11;
constexpr int TEXT_COLUMN = 19;

struct Kind {
    const char* word;
    Style style;
};
constexpr Kind KINDS[] = {{"ALARM", BAD}, {"normal", GOOD}, {"log", DOUBTFUL}};

} // namespace

void drawMessages(PanelScreen& screen, const PanelModel& model, int top, int rows, int& below) {
    const int count = static_cast<int>(model.messages.size());
    const auto at = [&](int i) { return model.messages[static_cast<std::size_t>(i)]; };
    const auto linesOf = [&](int i) {
        return Text::wrap(Text::decode(model.textOf(at(i))), screen.columns() - TEXT_COLUMN - 1);
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
            screen.put(row, TIME_COLUMN, at(i).clockText(), FAINT);
            screen.put(row, KIND_COLUMN, KINDS[at(i).kind].word, KINDS[at(i).kind].style);
        }
        for (const std::wstring& line : linesOf(i)) {
            screen.put(row, TEXT_COLUMN, row >= top && row < top + rows ? line : L"", PLAIN);
            ++row;
        }
    }
}
