#pragma once

#include <string>
#include <vector>

/// Texts as they stand in the cells of a terminal. A character may take no cell, one or two.
class Text {
public:
    Text() = delete;

    /// From now on texts are UTF-8, as those of the board's documents are, whatever the language
    /// of the user, which is often unset on a board.
    static void useLanguage();

    /// `text` with '?' in place of control characters, which a terminal would obey.
    static std::string harmless(std::string text);

    /// UTF-8 in wide characters. What a terminal would obey or cannot show becomes U+FFFD, the
    /// mark for such characters.
    static std::wstring decode(const std::string& text);

    /// The cells that `text` takes.
    static int width(const std::wstring& text);
    static int width(const std::string& text) { return width(decode(text)); }

    /// `text`, with an ellipsis at its end when it is cut to `cells` cells.
    static std::string cut(const std::string& text, int cells);

    /// `text` in exactly `cells` cells: filled with blanks, or cut as above.
    static std::wstring fit(const std::wstring& text, int cells);

    /// `text` in lines of at most `cells` cells (1 or more), broken at blanks where there are any.
    static std::vector<std::wstring> wrap(const std::wstring& text, int cells);
};
