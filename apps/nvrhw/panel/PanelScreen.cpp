#include "panel/PanelScreen.h"

#include "print/Console.h"
#include "print/Text.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <curses.h>
#include <sys/ioctl.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int ESCAPE_DELAY = 50; // milliseconds to tell the key from the beginning of another
constexpr int CRASHES[] = {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV};

struct StyleEntry {
    unsigned attributes;
    short colour; ///< -1: the terminal's own
};
constexpr std::array<StyleEntry, 7> STYLES{{{A_NORMAL, -1},
                                            {A_BOLD, -1},
                                            {A_DIM, -1},
                                            {A_NORMAL, COLOR_GREEN},
                                            {A_BOLD, COLOR_RED},
                                            {A_NORMAL, COLOR_YELLOW},
                                            {A_BOLD, COLOR_CYAN}}};

// What brings the terminal back without curses, which a crash may have left in any state.
struct Way {
    termios settings;
    char text[256];
    std::size_t size;
};
Way wayBack;
std::atomic<bool> isOpen{false};

SCREEN* terminal = nullptr;
FILE* output = nullptr;

void goBack() {
    if (isOpen.exchange(false)) {
        [[maybe_unused]] const ssize_t written = write(Console::file(), wayBack.text, wayBack.size);
        tcsetattr(Console::file(), TCSANOW, &wayBack.settings);
    }
}

void onCrash(int signal) {
    goBack();
    raise(signal); // the handler is used once
}

void rememberWayBack() {
    tcgetattr(Console::file(), &wayBack.settings);
    wayBack.size = 0;
    for (const char* text : {exit_attribute_mode, cursor_normal, keypad_local, exit_ca_mode}) {
        const std::size_t size = text != nullptr ? std::strlen(text) : 0;
        if (size <= sizeof wayBack.text - wayBack.size) {
            std::memcpy(wayBack.text + wayBack.size, text != nullptr ? text : "", size);
            wayBack.size += size;
        }
    }
    isOpen = true;
    static const int registered = std::atexit(goBack);
    static_cast<void>(registered);
    struct sigaction action {};
    action.sa_handler = onCrash;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (const int signal : CRASHES) {
        sigaction(signal, &action, nullptr);
    }
}

// Curses ignores SIGTSTP while it draws, which discards one that waits to be read; where it finds a
// handler it leaves the signal alone.
void keepStopSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGTSTP, &action, nullptr);
}

void openTerminal() {
    const char* type = std::getenv("TERM");
    int error = 0;
    if (setupterm(nullptr, Console::file(), &error) != OK || cursor_address == nullptr) {
        throw CommandError("a terminal of the type \"" + std::string(type != nullptr ? type : "") +
                           "\" cannot show the panel; set TERM to its real type");
    }
    keepStopSignals();
    rememberWayBack();                // curses changes the settings with the next call
    TERMINAL* const asked = cur_term; // the screen has one of its own
    output = fdopen(dup(Console::file()), "w");
    terminal = newterm(nullptr, output, stdin);
    if (terminal == nullptr) {
        throw CommandError("the terminal cannot be prepared for the panel");
    }
    del_curterm(asked);
}

bool defineColours() {
    if (!Console::hasColours() || !has_colors()) {
        return false;
    }
    start_color();
    use_default_colors();
    for (std::size_t i = 0; i < STYLES.size(); ++i) {
        init_pair(static_cast<short>(i + 1), STYLES[i].colour, -1);
    }
    return true;
}

} // namespace

PanelScreen::PanelScreen() {
    openTerminal();
    m_HasColours = defineColours();
    cbreak();
    noecho();
    nonl();
    set_escdelay(ESCAPE_DELAY);
    keypad(stdscr, true);
    nodelay(stdscr, true);
    hideCursor();
    adoptSize();
}

PanelScreen::~PanelScreen() {
    if (isOpen) {
        endwin();
        isOpen = false;
    }
    delscreen(terminal);
    std::fclose(output);
}

void PanelScreen::adoptSize() {
    winsize size{};
    if (ioctl(Console::file(), TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0) {
        resizeterm(size.ws_row, size.ws_col);
    }
    getmaxyx(stdscr, m_Rows, m_Columns);
    clearok(stdscr, true);
}

void PanelScreen::clear() { erase(); }

void PanelScreen::put(int row, int column, const std::wstring& text, int style) {
    const int rest = m_Columns - column;
    if (row < 0 || row >= m_Rows || column < 0 || rest <= 0) {
        return;
    }
    const auto index = static_cast<std::size_t>(style % REVERSED);
    const auto pair = m_HasColours ? COLOR_PAIR(static_cast<int>(index) + 1) : 0;
    attrset(static_cast<int>(STYLES[index].attributes | static_cast<unsigned>(pair) |
                             (style >= REVERSED ? A_REVERSE : A_NORMAL)));
    const std::wstring shown = Text::width(text) > rest ? Text::fit(text, rest) : text;
    mvaddnwstr(row, column, shown.c_str(), static_cast<int>(shown.size()));
}

int PanelScreen::put(int row, int column, const std::string& text, int style) {
    const std::wstring wide = Text::decode(text);
    put(row, column, wide, style);
    return column + Text::width(wide);
}

void PanelScreen::showCursorAt(int row, int column) {
    curs_set(1);
    ::move(row, column);
}

void PanelScreen::hideCursor() { curs_set(0); }

void PanelScreen::show() { refresh(); }

bool PanelScreen::readKey(int& key) {
    wint_t code = 0;
    const int kind = get_wch(&code);
    // A letter beyond ASCII could be taken for one of the keys' numbers.
    key = kind == KEY_CODE_YES || code < 0x80 ? static_cast<int>(code) : 0;
    return kind != ERR;
}

void PanelScreen::stopProcess() {
    endwin();
    isOpen = false;
    kill(getpid(), SIGSTOP); // goes on below
    isOpen = true;
    adoptSize();
}
