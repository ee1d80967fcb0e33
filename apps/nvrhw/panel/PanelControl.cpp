#include "panel/PanelControl.h"

#include "lines/BoardLines.h"
#include "print/Console.h"
#include "print/Duration.h"

#include <cstdlib>
#include <curses.h>

namespace {

constexpr int MESSAGE_STEP = 5;

double parseFrequency(const std::string& text) {
    char* rest = nullptr;
    const double value = std::strtod(text.c_str(), &rest);
    if (*rest != '\0' ||
        !(value >= OutputMode::LOWEST_FREQUENCY && value <= OutputMode::HIGHEST_FREQUENCY)) {
        throw CommandError("a frequency is a number, " + OutputMode::frequencies());
    }
    return value;
}

nvrhw::Output::Time parseTimeout(const std::string& text) {
    const nvrhw::Output::Time time(Duration::parse(text));
    if (time.count() < 0 || time > OutputMode::LONGEST_TIMEOUT) {
        throw CommandError("a time-out is such as 500ms, 10s or 2m, up to " +
                           Duration::text(OutputMode::LONGEST_TIMEOUT.count()) + "; 0 for none");
    }
    return time;
}

void takeNextMode(OutputMode& mode) {
    mode.kind = mode.kind == OutputMode::STEADY  ? OutputMode::FLASH
                : mode.kind == OutputMode::FLASH ? OutputMode::PULSE
                                                 : OutputMode::STEADY;
}

void invert(OutputMode& mode) { mode.isInverted = !mode.isInverted; }

void switchList(PanelFocus& focus) {
    focus.list = focus.list == PanelFocus::INPUTS ? PanelFocus::OUTPUTS : PanelFocus::INPUTS;
}

} // namespace

struct PanelControl::Binding {
    int key;
    void (*act)(PanelControl& control);
};

const PanelControl::Binding PanelControl::BINDINGS[] = {
    {KEY_UP, [](PanelControl& c) { c.m_Focus.grid().move(0, -1); }},
    {KEY_DOWN, [](PanelControl& c) { c.m_Focus.grid().move(0, 1); }},
    {KEY_LEFT, [](PanelControl& c) { c.m_Focus.grid().move(-1, 0); }},
    {KEY_RIGHT, [](PanelControl& c) { c.m_Focus.grid().move(1, 0); }},
    {KEY_HOME, [](PanelControl& c) { c.m_Focus.grid().selectFirst(); }},
    {KEY_END, [](PanelControl& c) { c.m_Focus.grid().selectLast(); }},
    {KEY_PPAGE, [](PanelControl& c) { c.m_Focus.messagesBelow += MESSAGE_STEP; }},
    {KEY_NPAGE, [](PanelControl& c) { c.m_Focus.messagesBelow -= MESSAGE_STEP; }},
    {'\t', [](PanelControl& c) { switchList(c.m_Focus); }},
    {KEY_BTAB, [](PanelControl& c) { switchList(c.m_Focus); }},
    {' ', [](PanelControl& c) { BoardLines::flip(c.input()); }},
    {'t', [](PanelControl& c) { c.trigger(); }},
    {'c', [](PanelControl& c) { c.output().mode.cancel(c.output().output); }},
    {'m', [](PanelControl& c) { c.changeMode(takeNextMode); }},
    {'f', [](PanelControl& c) { c.askFrequency(); }},
    {'o', [](PanelControl& c) { c.askTimeout(); }},
    {'i', [](PanelControl& c) { c.changeMode(invert); }},
    {'?', [](PanelControl& c) { c.m_Focus.isHelp = true; }},
};

bool PanelControl::press(int key, bool isShown) {
    m_Focus.note.clear();
    if (m_Focus.isHelp && isShown) {
        readHelp(key);
        return true;
    }
    if (key == 'q' && !m_Focus.prompt.isOpen()) {
        return false;
    }
    if (!isShown) {
        return key != 'q'; // nothing is done to a line that is not seen
    }
    try {
        act(key);
    } catch (const CommandError& error) {
        m_Focus.note = error.what();
    }
    return true;
}

// The view keeps the row where there is text.
void PanelControl::readHelp(int key) {
    const int step = key == KEY_DOWN    ? 1
                     : key == KEY_UP    ? -1
                     : key == KEY_NPAGE ? MESSAGE_STEP
                     : key == KEY_PPAGE ? -MESSAGE_STEP
                                        : 0;
    m_Focus.helpTop = step != 0 ? m_Focus.helpTop + step : 0;
    m_Focus.isHelp = step != 0 || key == KEY_RESIZE;
}

void PanelControl::act(int key) {
    if (m_Focus.prompt.isOpen()) {
        m_Focus.prompt.press(key);
        return;
    }
    for (const Binding& binding : BINDINGS) {
        if (binding.key == key) {
            binding.act(*this);
        }
    }
}

const nvrhw::Input& PanelControl::input() const {
    if (m_Focus.list != PanelFocus::INPUTS || m_Model.inputs.empty()) {
        throw CommandError("this key is for an input: Tab goes to the inputs");
    }
    return m_Model.inputs[static_cast<std::size_t>(m_Focus.inputs.selected())];
}

OutputView& PanelControl::output() const {
    if (m_Focus.list != PanelFocus::OUTPUTS || m_Model.outputs.empty()) {
        throw CommandError("this key is for an output: Tab goes to the outputs");
    }
    return m_Model.outputs[static_cast<std::size_t>(m_Focus.outputs.selected())];
}

void PanelControl::trigger() {
    output().mode.trigger(output().output);
    if (output().mode.kind == OutputMode::PULSE) { // over before it can be seen
        m_Focus.note = "a pulse of 10 ms was given";
    }
}

void PanelControl::askFrequency() {
    if (output().mode.kind != OutputMode::FLASH) {
        throw CommandError("only a flashing output has a frequency: m changes the mode");
    }
    const std::string question = "level changes a second, " + OutputMode::frequencies() + ": ";
    m_Focus.prompt.open(question, [this](const std::string& text) {
        changeMode([&](OutputMode& mode) { mode.frequency = parseFrequency(text); });
    });
}

void PanelControl::askTimeout() {
    if (output().mode.kind == OutputMode::PULSE) {
        throw CommandError("a pulse always lasts 10 ms: m changes the mode");
    }
    m_Focus.prompt.open("end after (500ms, 10s, 2m; 0: no end): ", [this](const std::string& text) {
        changeMode([&](OutputMode& mode) { mode.timeout = parseTimeout(text); });
    });
}
