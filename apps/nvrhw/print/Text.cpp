#include "print/Text.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstring>
#include <cwchar>
#include <langinfo.h>

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

std::wstring shortened(const std::wstring& text, int cells) {
    if (cells <= 0 || Text::width(text) <= cells) {
        return cells <= 0 ? L"" : text;
    }
    return text.substr(0, countFitting(text, 0, cells - 1)) + ELLIPSIS;
}

std::string encode(const std::wstring& text) {
    std::string result;
    std::mbstate_t state{};
    for (const wchar_t c : text) {
        char bytes[MB_LEN_MAX];
        const std::size_t size = std::wcrtomb(bytes, c, &state);
        if (size > sizeof bytes) { // a system without UTF-8 cannot show it
            state = std::mbstate_t();
            result += '?';
        } else {
            result.append(bytes, size);
        }
    }
    return result;
}

} // namespace

void Text::useLanguage() {
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}

std::string Text::harmless(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool isLong = c == 0xC2 && next >= 0x80 && next < 0xA0; // UTF-8 has some more
        if (isLong || c < ' ' || c == 0x7F) {
            text.replace(i, isLong ? 2 : 1, "?");
        }
    }
    return text;
}

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

std::string Text::cut(const std::string& text, int cells) {
    const std::wstring wide = decode(text);
    return width(wide) > cells ? encode(shortened(wide, cells)) : text;
}

std::wstring Text::fit(const std::wstring& text, int cells) {
    const std::wstring shown = shortened(text, cells);
    return shown + std::wstring(static_cast<std::size_t>(std::max(cells - width(shown), 0)), L' ');
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
