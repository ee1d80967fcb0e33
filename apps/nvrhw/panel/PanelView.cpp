#include "panel/PanelView.h"

#include "application/Moment.h"
#include "panel/PanelList.h"
#include "print/Text.h"

#include <algorithm>

namespace {

constexpr int FRAME_ROWS = 6; // title, three rules, the row about the selected line, keys
constexpr int LEAST_INPUT_COLUMNS = 39;

struct Key {
    const char* key;
    const char* effect;
};
// In the order in which they find room.
const std::vector<Key> INPUT_KEYS{{"?", "help"},
                                  {"q", "quit"},
                                  {"Space", "flip (simulated)"},
                                  {"Tab", "outputs"},
                                  {"PgUp/PgDn", "messages"}};
const std::vector<Key> OUTPUT_KEYS{{"?", "help"},   {"q", "quit"},    {"t", "trigger"},
                                   {"c", "cancel"}, {"m", "mode"},    {"f", "frequency"},
                                   {"i", "invert"}, {"o", "time-out"}};

// NOLINTBEGIN(bugprone-suspicious-missing-comma): long ones go on in the next line
constexpr const char* HELP[] = {
    "Tab          from the inputs to the outputs and back",
    "arrows       select a line; Home and End the first and the last one",
    "PgUp, PgDn   earlier and later messages",
    "",
    "on an input",
    "Space        flip it (on a simulated bank), as another process would",
    "",
    "on an output; a change of its mode switches it off first",
    "t, c         trigger it in its mode, cancel it",
    "m            next mode: steady, flash, pulse of 10 ms",
    "f            frequency while flashing, in level changes a second: two make a cycle of on "
    "and off",
    "o            time-out: when it goes back to normal by itself",
    "i            invert: active is the other level",
    "",
    "q, Ctrl-C    quit: flashing and timed outputs triggered here are switched off, as nobody "
    "would carry them on; steady ones stay on",
    "",
    "The line of an input or output is written bank/bit; lvl is its level, 0 or 1. The state of "
    "an input is what the last alarm message said. A small terminal leaves out columns."};
// NOLINTEND(bugprone-suspicious-missing-comma)

std::string plural(int count, const char* one, const char* more) {
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

// One sentence on a line.
template <typename Each>
std::string detailOf(const char* what, const Each& each, const std::string& rest) {
    return what + std::to_string(each.id) +
           (each.name.empty() ? "" : " \"" + std::string(each.name) + "\"") + ": bank " +
           std::to_string(each.line.bank) + ", bit " + std::to_string(each.line.bit) + "; " + rest;
}

std::string detail(const nvrhw::Input& input) {
    const Cause cause = input.cause();
    return detailOf("input ", input,
                    cause ? cause.text()
                          : "in alarm at level " + std::to_string(input.line.validLevel));
}

std::string detail(const OutputView& view) {
    return detailOf("output ", view.output,
                    view.isReadable() ? "active at level " + std::to_string(view.activeLevel()) +
                                            "; " + view.mode.text()
                                      : view.state.cause.text());
}

} // namespace

// As few columns of inputs as let all lines be seen, so that their names have room.
PanelLayout::PanelLayout(int rows, int columns, int inputs, int outputs) {
    const int leastMessageRows = std::clamp((rows - FRAME_ROWS + 2) / 4, 1, 5);
    const int listRows = rows - FRAME_ROWS - leastMessageRows;
    const int mostColumns = columns / LEAST_INPUT_COLUMNS;
    const auto rowsNeeded = [&] { return std::max(1, (inputs + inputColumns - 1) / inputColumns); };
    inputColumns = 1;
    while (inputColumns < mostColumns && rowsNeeded() + std::max(1, outputs) > listRows) {
        ++inputColumns;
    }
    outputRows = std::max({1, std::min(outputs, listRows / 3), //
                           std::min(outputs, listRows - rowsNeeded())});
    inputRows = std::min(rowsNeeded(), listRows - outputRows);
    messageRows = rows - FRAME_ROWS - inputRows - outputRows;
}

void PanelView::draw() {
    m_Screen.clear();
    m_Screen.hideCursor();
    if (!isShown()) {
        drawTooSmall();
    } else if (m_Focus.isHelp) {
        drawHelp();
    } else {
        drawBoard(PanelLayout(m_Screen.rows(), m_Screen.columns(),
                              static_cast<int>(m_Model.inputs.size()),
                              static_cast<int>(m_Model.outputs.size())));
    }
    m_Screen.show();
}

void PanelView::drawTooSmall() {
    const std::string text = "The panel needs " + std::to_string(PanelLayout::LEAST_COLUMNS) +
                             " columns and " + std::to_string(PanelLayout::LEAST_ROWS) +
                             " rows; this terminal has " + std::to_string(m_Screen.columns()) +
                             " and " + std::to_string(m_Screen.rows()) +
                             ". Make it larger, or press q to quit.";
    int row = 0;
    for (const auto& line : Text::wrap(Text::decode(text), m_Screen.columns())) {
        m_Screen.put(row++, 0, line, STRONG);
    }
}

void PanelView::drawHelp() {
    const int rows = m_Screen.rows() - 2;
    std::vector<std::wstring> lines;
    for (const char* text : HELP) {
        const auto wrapped = Text::wrap(Text::decode(text), m_Screen.columns() - 3);
        lines.insert(lines.end(), wrapped.begin(), wrapped.end());
    }
    const int hidden = std::max(0, static_cast<int>(lines.size()) - rows);
    m_Focus.helpTop = std::clamp(m_Focus.helpTop, 0, hidden);
    drawRule(m_Screen, 0, "KEYS");
    for (int i = 0; i < std::min(rows, static_cast<int>(lines.size())); ++i) {
        m_Screen.put(
            i + 1, 2,
            lines.at(static_cast<std::size_t>(i) + static_cast<std::size_t>(m_Focus.helpTop)),
            PLAIN);
    }
    m_Screen.put(rows + 1, 1,
                 hidden > 0 ? "arrows: more   another key: back" : "any key goes back to the lines",
                 FAINT);
}

void PanelView::drawBoard(const PanelLayout& layout) {
    drawTitle();
    m_Focus.inputs.arrange(static_cast<int>(m_Model.inputs.size()), layout.inputColumns,
                           layout.inputRows);
    m_Focus.outputs.arrange(static_cast<int>(m_Model.outputs.size()), 1, layout.outputRows);
    const bool onInputs = m_Focus.list == PanelFocus::INPUTS;
    drawList(m_Screen, layout.inputTop(), m_Focus.inputs, "INPUTS",
             describeAll(m_Model.inputs, describe), onInputs);
    drawList(m_Screen, layout.outputTop(), m_Focus.outputs, "OUTPUTS",
             describeAll(m_Model.outputs, describe), !onInputs);
    drawRule(m_Screen, layout.messageTop() - 1, "MESSAGES");
    drawMessages(m_Screen, m_Model, layout.messageTop(), layout.messageRows, m_Focus.messagesBelow);
    if (m_Focus.messagesBelow > 0) {
        const std::wstring text = L" \u2193" + std::to_wstring(m_Focus.messagesBelow) + L" newer";
        m_Screen.put(layout.messageTop() - 1, m_Screen.columns() - Text::width(text), text, STRONG);
    }
    drawDetail(layout.detailRow());
    if (m_Focus.prompt.isOpen()) {
        drawPrompt(layout.keyRow());
    } else {
        drawKeys(layout.keyRow());
    }
}

// To the right what counts, as far as there is room: alarms first; the name of the board to the
// left of it.
void PanelView::drawTitle() {
    const int alarms = m_Model.countInputs(nvrhw::Input::Alarm);
    const int unreadable = m_Model.countInputs(nvrhw::Input::Unreadable);
    const std::string alarmText = " " + plural(alarms, "alarm", "alarms") + " ";
    const int most = m_Screen.columns() - static_cast<int>(alarmText.size());
    std::string rest;
    for (const std::string& part :
         {unreadable > 0 ? " " + std::to_string(unreadable) + " unreadable " : "",
          " " + plural(m_Model.countOutputsOn(), "output", "outputs") + " on ",
          " " + nvrhw::clockText(nvrhw::Moment::now().wall).substr(0, 8) + " "}) {
        rest += static_cast<int>(rest.size() + part.size()) <= most ? part : "";
    }
    const int right = most - static_cast<int>(rest.size());
    const int bar = PanelScreen::REVERSED;
    m_Screen.put(0, 0, Text::fit(L" nvrhw panel  " + Text::decode(m_Model.machine), right),
                 STRONG + bar);
    m_Screen.put(0, right, alarmText, (alarms > 0 ? BAD : PLAIN) + bar);
    m_Screen.put(0, right + static_cast<int>(alarmText.size()), rest, PLAIN + bar);
}

void PanelView::drawDetail(int row) {
    const auto index = static_cast<std::size_t>(m_Focus.grid().selected());
    const bool hasNote = !m_Focus.note.empty();
    std::string text = m_Focus.note;
    if (!hasNote && m_Focus.list == PanelFocus::INPUTS && index < m_Model.inputs.size()) {
        text = detail(m_Model.inputs[index]);
    } else if (!hasNote && m_Focus.list == PanelFocus::OUTPUTS && index < m_Model.outputs.size()) {
        text = detail(m_Model.outputs[index]);
    }
    m_Screen.put(row, 1, text, hasNote ? DOUBTFUL : STRONG);
}

// The answer is always to be seen, the question as far as there is room.
void PanelView::drawPrompt(int row) {
    const int room = m_Screen.columns() - 3 - Text::width(m_Focus.prompt.answer());
    int column = m_Screen.put(row, 1, Text::cut(m_Focus.prompt.question(), room), STRONG);
    column = m_Screen.put(row, column, m_Focus.prompt.answer(), PLAIN);
    m_Screen.put(row, column + 2, "Enter takes it, Esc leaves it", FAINT);
    m_Screen.showCursorAt(row, column);
}

void PanelView::drawKeys(int row) {
    int column = 1;
    for (const Key& key : m_Focus.list == PanelFocus::INPUTS ? INPUT_KEYS : OUTPUT_KEYS) {
        const int width = Text::width(key.key) + 1 + Text::width(key.effect);
        if (column + width <= m_Screen.columns()) {
            m_Screen.put(row, column, key.key, STRONG);
            m_Screen.put(row, column + Text::width(key.key) + 1, key.effect, FAINT);
            column += width + 2;
        }
    }
}
