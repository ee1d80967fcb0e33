#include "board/check/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>

namespace {

constexpr std::size_t LONGEST = 64; // no known name comes near it

/// Upper case or not is the most frequent mistake: it does not count.
std::string lower(std::string name) {
    for (char& c : name) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return name;
}

/// How many letters must be put in, left out, exchanged or swapped with their neighbours.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> rows(a.size() + 1,
                                               std::vector<std::size_t>(b.size() + 1));
    std::iota(rows[0].begin(), rows[0].end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        rows[i][0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t exchange = rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, exchange});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
            }
        }
    }
    return rows[a.size()][b.size()];
}

} // namespace

std::string suggestion(const std::vector<std::string>& known, const std::string& written) {
    std::string best;
    std::size_t least = LONGEST;
    for (const std::string& name : known) {
        if (written.size() > LONGEST) {
            break;
        }
        const std::size_t steps = distance(lower(name), lower(written));
        if (steps < least && steps * 3 <= name.size()) {
            least = steps;
            best = name;
        }
    }
    return best.empty() ? "" : ": did you mean " + best + "?";
}
