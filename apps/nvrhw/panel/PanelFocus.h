#pragma once

// This room: the board's lines live in a terminal. What is known stands in PanelModel, what its
// user has before them in PanelFocus, which PanelControl changes; PanelView draws both, PanelMail
// brings messages from other threads, and the command keeps them going.

#include <functional>
#include <string>

/// Which of many items laid out in rows are to be seen, and which one is selected. Items run from
/// left to right, then down.
class PanelGrid {
public:
    /// Takes a new shape (each 1 or more) and number of items; the selected one stays to be seen.
    void arrange(int count, int columns, int visibleRows);

    /// Selects the item so many columns to the right and rows below, as far as there are any.
    void move(int right, int down);

    void selectFirst() { select(0); }
    void selectLast() { select(m_Count - 1); }

    int columns() const { return m_Columns; }
    int selected() const { return m_Selected; }

    /// The items to be seen, from the first to before the last; and how many stand above and below.
    int first() const { return m_TopRow * m_Columns; }
    int last() const;
    int above() const { return first(); }
    int below() const { return m_Count - last(); }

private:
    void select(int item);

    int m_Count = 0;
    int m_Columns = 1;
    int m_VisibleRows = 1;
    int m_TopRow = 0;
    int m_Selected = 0;
};

/// A question in one row, and the answer as far as it is typed.
class PanelPrompt {
public:
    /// Takes the answer; raises CommandError when it is not one.
    using Accept = std::function<void(const std::string&)>;

    bool isOpen() const { return m_Accept != nullptr; }
    void open(const std::string& question, const Accept& accept);

    /// Takes a key while the question is open. Raises CommandError for a wrong answer, which can
    /// then be mended.
    void press(int key);

    const std::string& question() const { return m_Question; }
    const std::string& answer() const { return m_Answer; }

private:
    std::string m_Question;
    std::string m_Answer;
    Accept m_Accept;
};

/// What its user has before them: the selected line, how far back the messages are, what is asked.
struct PanelFocus {
    enum List { INPUTS, OUTPUTS };

    List list = INPUTS;
    PanelGrid inputs{};
    PanelGrid outputs{};
    int messagesBelow = 0; ///< rows between the last one to be seen and the newest
    bool isHelp = false;
    int helpTop = 0; ///< the first row of the help to be seen
    PanelPrompt prompt{};
    std::string note{}; ///< the answer to the last key

    PanelGrid& grid() { return list == INPUTS ? inputs : outputs; }
};
