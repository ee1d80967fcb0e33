#pragma once

/// How the rows of the terminal are shared out. From top to bottom: a title, the inputs and the
/// outputs and the messages, each below a rule, a row about the selected line, a row of keys.
struct PanelLayout {
    static constexpr int LEAST_COLUMNS = 40;
    static constexpr int LEAST_ROWS = 10;

    /// Whether a terminal of this size is large enough.
    static bool fits(int rows, int columns) {
        return rows >= LEAST_ROWS && columns >= LEAST_COLUMNS;
    }

    /// For a terminal that is large enough.
    PanelLayout(int rows, int columns, int inputs, int outputs);

    int inputColumns;
    int inputRows;
    int outputRows;
    int messageRows;

    int inputTop() const { return 2; }
    int outputTop() const { return inputTop() + inputRows + 1; }
    int messageTop() const { return outputTop() + outputRows + 1; }
    int detailRow() const { return messageTop() + messageRows; }
    int keyRow() const { return detailRow() + 1; }
};
