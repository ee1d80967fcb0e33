#pragma once

#include <string>
#include <vector>

/// Texts as they stand in the cells of a terminal. A character may take no cell, one or two.
class Text {
public:
    Text() = delete;

    /// UTF-8 in wide characters. What a terminal would obey or cannot show becomes U+FFFD, the
    /// mark for such characters.
    static std::wstring decode(const std::string& text);

    /// The cells that `text` takes.
    static int width(const std::wstring& text);

    /// `text` in exactly `cells` cells: filled with blanks, or cut with an ellipsis at its end.
    static std::wstring fit(const std::wstring& text, int cells);

    /// `text` in lines of at most `cells` cells (1 or more), broken at blanks where there are any.
    static std::vector<std::wstring> wrap(const std::wstring& text, int cells);
};
