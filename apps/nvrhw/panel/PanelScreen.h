#pragma once

#include "print/Fact.h"

#include <string>

/// The terminal while the panel has it. There is one at a time, and only one thread uses it. The
/// terminal is as it was before when the object is gone, when the process exits, and when it
/// crashes.
class PanelScreen {
public:
    static constexpr int REVERSED = 16; ///< to be added to a style

    /// Raises CommandError when the terminal cannot show a panel.
    PanelScreen();
    ~PanelScreen();
    PanelScreen(const PanelScreen&) = delete;
    PanelScreen& operator=(const PanelScreen&) = delete;

    int rows() const { return m_Rows; }
    int columns() const { return m_Columns; }

    /// Takes over the terminal's present size.
    void adoptSize();

    /// Begins an empty picture; put() draws into it, show() brings it to the terminal.
    void clear();

    /// What does not fit into the row is cut off.
    void put(int row, int column, const std::wstring& text, int style);

    /// The same from UTF-8; returns the column behind it.
    int put(int row, int column, const std::string& text, int style);

    /// The cursor is seen there, or nowhere.
    void showCursorAt(int row, int column);
    void hideCursor();

    void show();

    /// The next key pressed, as curses names it, 0 for one without meaning here; false when there
    /// is none.
    bool readKey(int& key);

    /// Leaves the terminal, stops the process as the shell's job control wants it, and goes on
    /// when it is continued.
    void stopProcess();

private:
    int m_Rows = 0;
    int m_Columns = 0;
    bool m_HasColours = false;
};
