#include "panel/PanelView.h"

#include "panel/PanelMessageView.h"
#include "panel/PanelWords.h"
#include "print/Text.h"

#include <algorithm>
#include <ctime>
#include <iterator>

namespace {

constexpr int LEVEL_WIDTH = 3;
constexpr int STATE_WIDTH = 12;
constexpr int REMAINING_WIDTH = 9;
constexpr int MODE_WIDTH = 28; // what the usual modes take
constexpr int HEADING_WIDTH = 8;

struct Key {
    const char* key;
    const char* effect;
};
constexpr Key INPUT_KEYS[] = {{"Space", "flip (simulated)"},
                              {"Tab", "outputs"},
                              {"PgUp/PgDn", "messages"},
                              {"?", "help"},
                              {"q", "quit"}};
constexpr Key OUTPUT_KEYS[] = {{"t", "trigger"},   {"c", "cancel"},   {"m", "mode"},
                               {"f", "frequency"}, {"o", "time-out"}, {"i", "invert"},
                               {"?", "help"},      {"q", "quit"}};

constexpr const char* HELP[] = {
    "",
    "  Tab          from the inputs to the outputs and back",
    "  arrows       select a line; Home and End the first and the last one",
    "  PgUp, PgDn   earlier and later messages",
    "",
    "  on an input",
    "  Space        flip it (on a simulated bank), as another process would",
    "",
    "  on an output; a change of its mode switches it off first",
    "  t, c         trigger it in its mode, cancel it",
    "  m            next mode: steady, flash, pulse of 10 ms",
    "  f            frequency while flashing, in level changes a second",
    "  o            time-out: when it goes back to normal by itself",
    "  i            invert: active is the other level",
    "",
    "  q, Ctrl-C    quit: flashing and timed outputs triggered here are switched off,",
    "               as nobody would carry them on; steady ones stay on",
    "",
    "  The line of an input or output is written bank/bit; lvl is its level, 0 or 1.",
    "  The state of an input is what the last alarm message said.",
    "",
    "  Any key goes back to the lines."};

// The columns that inputs and outputs begin with, and their cells.
struct LineColumns {
    template <typename T> explicit LineColumns(const std::vector<T>& lines) {
        for (const T& each : lines) {
            const Line& line = each.line;
            id = std::max(id, static_cast<int>(std::to_string(line.id).size()));
            name = std::max(name, Text::width(Text::decode(line.name)));
            place = std::max(place, static_cast<int>(PanelWords::place(line).size()));
        }
        // The heading of the list stands above these two columns.
        idColumn = name > 0 ? id : std::max(id, HEADING_WIDTH);
        name = name > 0 ? std::max(name, HEADING_WIDTH - 1 - id) : 0;
    }

    // With names as wide as the item's width allows when `others` is left for other columns.
    std::vector<PanelListView::Column> columns(int width, int others) const {
        const int used = 1 + idColumn + 2 + place + 1 + LEVEL_WIDTH + 1 + STATE_WIDTH + 1;
        return {{"", idColumn},
                {"", std::clamp(width - used - others, 0, name)},
                {"line", place},
                {"lvl", LEVEL_WIDTH},
                {"state", STATE_WIDTH}};
    }

    template <typename T> std::vector<PanelListView::Cell> cells(const T& each) const {
        std::wstring number = std::to_wstring(each.line.id);
        number.insert(0, static_cast<std::size_t>(id) - number.size(), L' ');
        return {{number},
                {Text::decode(each.line.name)},
                {Text::decode(PanelWords::place(each.line))},
                {L" " + PanelWords::level(each.level)},
                PanelWords::state(each)};
    }

    int id = 1;
    int name = 0;
    int place = 4;
    int idColumn;
};

std::string plural(int count, const char* one, const char* more) {
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

} // namespace

bool PanelView::isShown() const { return PanelLayout::fits(m_Screen.rows(), m_Screen.columns()); }

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
    const std::string text = "The panel needs 80 columns and 24 rows; this terminal has " +
                             std::to_string(m_Screen.columns()) + " and " +
                             std::to_string(m_Screen.rows()) +
                             ". Make it larger, or press q to quit.";
    int row = 0;
    for (const auto& line : Text::wrap(Text::decode(text), m_Screen.columns())) {
        m_Screen.put(row++, 0, line, PanelScreen::STRONG);
    }
}

void PanelView::drawHelp() {
    PanelListView::drawRule(m_Screen, 0, "KEYS");
    int row = 1;
    for (const char* text : HELP) {
        m_Screen.put(row++, 0, text, PanelScreen::PLAIN);
    }
}

void PanelView::drawBoard(const PanelLayout& layout) {
    drawTitle();
    drawInputs(layout);
    drawOutputs(layout);
    drawMessages(layout);
    drawDetail(layout.detailRow());
    drawKeys(layout.keyRow());
}

void PanelView::drawTitle() {
    const int bar = PanelScreen::REVERSED;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char clock[16];
    std::strftime(clock, sizeof clock, "%H:%M:%S", &local);

    const int alarms = m_Model.countInputs(PanelInput::ALARM);
    const int unreadable = m_Model.countInputs(PanelInput::UNREADABLE);
    const std::string alarmText = " " + plural(alarms, "alarm", "alarms") + " ";
    const std::string rest =
        (unreadable > 0 ? " " + std::to_string(unreadable) + " unreadable " : "") + " " +
        plural(m_Model.countOutputsOn(), "output", "outputs") + " on  " + clock + " ";
    const int right = m_Screen.columns() - static_cast<int>(alarmText.size() + rest.size());

    m_Screen.put(0, 0, Text::fit(L" nvrhw panel  " + Text::decode(m_Model.machine), right),
                 PanelScreen::STRONG + bar);
    m_Screen.put(0, right, alarmText, (alarms > 0 ? PanelScreen::BAD : PanelScreen::PLAIN) + bar);
    m_Screen.put(0, right + static_cast<int>(alarmText.size()), rest, PanelScreen::PLAIN + bar);
}

void PanelView::drawInputs(const PanelLayout& layout) {
    m_Focus.inputs.arrange(static_cast<int>(m_Model.inputs.size()), layout.inputColumns,
                           layout.inputRows);
    const LineColumns lines(m_Model.inputs);
    const PanelListView list(m_Screen, layout.inputTop(), m_Focus.inputs,
                             lines.columns(m_Screen.columns() / layout.inputColumns, 0));
    list.drawRule("INPUTS");
    for (std::size_t i = 0; i < m_Model.inputs.size(); ++i) {
        const int item = static_cast<int>(i);
        list.drawItem(item, m_Focus.list == PanelFocus::INPUTS && item == m_Focus.inputs.selected(),
                      lines.cells(m_Model.inputs[i]));
    }
}

void PanelView::drawOutputs(const PanelLayout& layout) {
    m_Focus.outputs.arrange(static_cast<int>(m_Model.outputs.size()), 1, layout.outputRows);
    const LineColumns lines(m_Model.outputs);
    auto columns = lines.columns(m_Screen.columns(), REMAINING_WIDTH + 1 + MODE_WIDTH + 1);
    int used = 1 + REMAINING_WIDTH + 1 + 1;
    for (const auto& column : columns) {
        used += column.width == 0 ? 0 : column.width + 1;
    }
    columns.push_back({"left", REMAINING_WIDTH});
    columns.push_back({"mode", m_Screen.columns() - used});
    const PanelListView list(m_Screen, layout.outputTop(), m_Focus.outputs, columns);
    list.drawRule("OUTPUTS");
    for (std::size_t i = 0; i < m_Model.outputs.size(); ++i) {
        const PanelOutput& output = m_Model.outputs[i];
        const int item = static_cast<int>(i);
        auto cells = lines.cells(output);
        cells.push_back({Text::decode(PanelWords::remaining(output))});
        cells.push_back({Text::decode(PanelWords::mode(output.mode))});
        list.drawItem(
            item, m_Focus.list == PanelFocus::OUTPUTS && item == m_Focus.outputs.selected(), cells);
    }
}

void PanelView::drawMessages(const PanelLayout& layout) {
    PanelMessageView view(m_Screen, m_Model);
    PanelListView::drawRule(m_Screen, layout.messageTop() - 1, "MESSAGES");
    view.draw(layout.messageTop(), layout.messageRows, m_Focus.messagesBelow);
    if (m_Focus.messagesBelow > 0) {
        const std::wstring text = L" \u2193" + std::to_wstring(m_Focus.messagesBelow) + L" newer";
        m_Screen.put(layout.messageTop() - 1, m_Screen.columns() - Text::width(text), text,
                     PanelScreen::STRONG);
    }
}

void PanelView::drawDetail(int row) {
    const auto index = static_cast<std::size_t>(m_Focus.grid().selected());
    const bool hasNote = !m_Focus.note.empty();
    std::string text = hasNote ? m_Focus.note : "";
    if (!hasNote && m_Focus.list == PanelFocus::INPUTS && index < m_Model.inputs.size()) {
        text = PanelWords::detail(m_Model.inputs[index]);
    } else if (!hasNote && m_Focus.list == PanelFocus::OUTPUTS && index < m_Model.outputs.size()) {
        text = PanelWords::detail(m_Model.outputs[index]);
    }
    m_Screen.put(row, 1, text, hasNote ? PanelScreen::DOUBTFUL : PanelScreen::STRONG);
}

void PanelView::drawKeys(int row) {
    int column = 1;
    if (m_Focus.prompt.isOpen()) {
        column = m_Screen.put(row, column, m_Focus.prompt.question(), PanelScreen::STRONG);
        column = m_Screen.put(row, column, m_Focus.prompt.answer(), PanelScreen::PLAIN);
        m_Screen.put(row, column + 2, "Enter takes it, Esc leaves it", PanelScreen::FAINT);
        m_Screen.showCursorAt(row, column);
        return;
    }
    const bool onInputs = m_Focus.list == PanelFocus::INPUTS;
    const Key* key = onInputs ? std::begin(INPUT_KEYS) : std::begin(OUTPUT_KEYS);
    const Key* end = onInputs ? std::end(INPUT_KEYS) : std::end(OUTPUT_KEYS);
    for (; key != end; ++key) {
        column = m_Screen.put(row, column, key->key, PanelScreen::STRONG);
        column = m_Screen.put(row, column + 1, key->effect, PanelScreen::FAINT) + 2;
    }
}
