#include "panel/PanelPrompt.h"

#include <curses.h>

namespace {

constexpr std::size_t LONGEST_ANSWER = 20;
constexpr int ESCAPE = 27;
constexpr int DELETE = 127;

} // namespace

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
