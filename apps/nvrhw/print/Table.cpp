#include "print/Table.h"

#include "print/Console.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char GAP[] = "  ";
constexpr std::size_t HEADING_INDENT = 2;
constexpr const char* STYLES[] = {"", "\033[1m", "\033[32m", "\033[1;31m", "\033[33m"};
constexpr char STYLE_END[] = "\033[0m";

std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](unsigned char c) {
        return (c & 0xC0U) != 0x80; // not inside a UTF-8 character
    }));
}

std::string styled(const Table::Cell& cell, bool hasColours) {
    return hasColours && cell.style != Table::PLAIN && !cell.text.empty()
               ? STYLES[cell.style] + cell.text + STYLE_END
               : cell.text;
}

} // namespace

Table::Cell::Cell(const char* content) : text(Console::harmless(content)) {}

Table::Cell::Cell(const std::string& content) : text(Console::harmless(content)) {}

Table::Cell::Cell(int number) : text(std::to_string(number)) {}

Table::Cell::Cell(const std::string& content, Style as)
    : text(Console::harmless(content)), style(as) {}

Table::Table(std::vector<Column> columns) : m_Columns(std::move(columns)) {
    Row titles{{}, false};
    for (const Column& column : m_Columns) {
        titles.cells.emplace_back(column.title, STRONG);
        m_HasTitles = m_HasTitles || !column.title.empty();
    }
    m_Rows.push_back(titles);
}

void Table::add(std::vector<Cell> cells) {
    cells.resize(m_Columns.size(), "");
    m_Rows.push_back({std::move(cells), false});
}

void Table::addHeading(const std::string& text) {
    m_Indent = HEADING_INDENT;
    m_Rows.push_back({{{text, STRONG}}, true});
}

std::string Table::text(bool hasColours) const {
    const std::vector<std::size_t> columnWidths = widths();
    std::string text;
    for (auto row = m_Rows.begin() + (m_HasTitles ? 0 : 1); row != m_Rows.end(); ++row) {
        text += row->isHeading ? styled(row->cells.front(), hasColours)
                               : line(*row, columnWidths, hasColours);
        text += '\n';
    }
    return text;
}

void Table::print() const { Console::print(text(Console::hasColours())); }

// 0 for a column that has nothing but its title.
std::vector<std::size_t> Table::widths() const {
    std::vector<std::size_t> widths(m_Columns.size(), 0);
    for (auto row = m_Rows.begin() + 1; row != m_Rows.end(); ++row) {
        for (std::size_t i = 0; !row->isHeading && i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], widthOf(row->cells[i].text));
        }
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
        widths[i] = widths[i] == 0 ? 0 : std::max(widths[i], widthOf(m_Columns[i].title));
    }
    return widths;
}

std::string Table::line(const Row& row, const std::vector<std::size_t>& widths,
                        bool hasColours) const {
    std::string line(m_Indent, ' ');
    std::string padding; // written only before a further content: no blanks at the end
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (widths[i] == 0) {
            continue;
        }
        const Cell& cell = row.cells[i];
        const std::string fill(widths[i] - widthOf(cell.text), ' ');
        const bool isRight = m_Columns[i].alignment == RIGHT;
        padding += isRight ? fill : "";
        if (!cell.text.empty()) {
            line += padding + styled(cell, hasColours);
            padding.clear();
        }
        padding += (isRight ? "" : fill) + GAP;
    }
    return line;
}
