#pragma once

#include <string>
#include <vector>

/// A table for people: aligned columns under their titles. A column without any content is left
/// out.
class Table {
public:
    enum Style { PLAIN, STRONG, GOOD, BAD, DOUBTFUL };
    enum Alignment { LEFT, RIGHT };

    struct Column {
        std::string title; ///< no column has one: the table has no line of titles
        Alignment alignment = LEFT;
    };

    /// UTF-8; control characters are replaced.
    struct Cell {
        Cell(const char* content);        // NOLINT(google-explicit-constructor)
        Cell(const std::string& content); // NOLINT(google-explicit-constructor)
        Cell(int number);                 // NOLINT(google-explicit-constructor)
        Cell(const std::string& content, Style as);

        std::string text;
        Style style = PLAIN;
    };

    explicit Table(std::vector<Column> columns);

    /// One cell for each column; missing ones are empty.
    void add(std::vector<Cell> cells);

    /// A line of its own between the rows, which stand below it a little to the right.
    void addHeading(const std::string& text);

    /// The lines of the table, styled when `hasColours`.
    std::string text(bool hasColours) const;

    /// Prints it on standard output.
    void print() const;

private:
    struct Row {
        std::vector<Cell> cells;
        bool isHeading;
    };

    std::vector<std::size_t> widths() const;
    std::string line(const Row& row, const std::vector<std::size_t>& widths, bool hasColours) const;

    std::vector<Column> m_Columns;
    std::vector<Row> m_Rows;
    bool m_HasTitles = false;
    std::size_t m_Indent = 0;
};
