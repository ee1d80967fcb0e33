#include "print/Text.h"

#include <algorithm>
#include <cwchar>

namespace {

constexpr wchar_t UNSHOWABLE = L'\uFFFD';
constexpr wchar_t ELLIPSIS = L'\u2026';

// Invisible characters that change the direction of what follows, or join it.
bool isFormat(wchar_t c) {
    return (c >= 0x200B && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

int widthOf(wchar_t c) { return std::max(wcwidth(c), 0); }

// How many characters from `start` on fit into `cells`.
std::size_t countFitting(const std::wstring& text, std::size_t start, int cells) {
    std::size_t end = start;
    for (int used = 0; end < text.size(); ++end) {
        used += widthOf(text[end]);
        if (used > cells) {
            break;
        }
    }
    return end - start;
}

} // namespace

std::wstring Text::decode(const std::string& text) {
    std::wstring result;
    std::mbstate_t state{};
    for (std::size_t i = 0; i < text.size();) {
        wchar_t c = 0;
        const std::size_t size = std::mbrtowc(&c, text.data() + i, text.size() - i, &state);
        if (size == 0 || size > text.size() - i) { // a zero, or no whole character
            result += UNSHOWABLE;
            state = std::mbstate_t();
            ++i;
            continue;
        }
        result += wcwidth(c) < 0 || isFormat(c) ? UNSHOWABLE : c;
        i += size;
    }
    return result;
}

int Text::width(const std::wstring& text) {
    int cells = 0;
    for (const wchar_t c : text) {
        cells += widthOf(c);
    }
    return cells;
}

std::wstring Text::fit(const std::wstring& text, int cells) {
    if (cells <= 0) {
        return L"";
    }
    std::wstring result = text;
    if (width(text) > cells) {
        result = text.substr(0, countFitting(text, 0, cells - 1)) + ELLIPSIS;
    }
    return result + std::wstring(static_cast<std::size_t>(cells - width(result)), L' ');
}

std::vector<std::wstring> Text::wrap(const std::wstring& text, int cells) {
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    do {
        std::size_t count = std::max<std::size_t>(countFitting(text, start, cells), 1);
        if (start + count < text.size()) {
            const std::size_t blank = text.rfind(L' ', start + count);
            count = blank != std::wstring::npos && blank > start ? blank - start : count;
        }
        lines.push_back(text.substr(start, count));
        start = std::min(text.find_first_not_of(L' ', start + count), text.size());
    } while (start < text.size());
    return lines;
}
