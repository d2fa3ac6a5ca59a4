#include "run/nearest_name.h"

#include "run/report.h"

#include <algorithm>
#include <numeric>

namespace veltrane::host {
namespace {

/// What is longer is no name that was mistyped, and comparing takes time with the product of the lengths.
constexpr std::size_t kLongestName = 200;

/// A word of at least this many letters stands for a name that it begins.
constexpr std::size_t kShortestBeginning = 3;

/// The form in which names are compared: without case (of ASCII letters) and without blanks around.
std::string Folded(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    std::string folded(text);
    for (char& c : folded) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return folded;
}

/// How many letters have to be put in, left out, changed or swapped with their neighbour to turn one text into the
/// other, by the table of all beginnings, of which three rows are kept.
std::size_t Slips(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

/// How far a name is from a word, both folded; more than `kLongestName` when it is not near.
std::size_t Distance(const std::string& word, const std::string& name) {
    if (word == name) {
        return 0;
    }
    const std::size_t longer = std::max(word.size(), name.size());
    if (longer > kLongestName) {
        return kLongestName + 1;
    }
    const std::size_t slips = Slips(word, name);
    const bool near = slips < longer && slips <= std::max<std::size_t>(longer / 3, 1);
    if (near) {
        return slips;
    }
    const bool begins = word.size() >= kShortestBeginning && name.starts_with(word);
    return begins ? longer - word.size() : kLongestName + 1;
}

} // namespace

std::string NearestName(std::string_view word, const std::vector<std::string>& names) {
    const std::string folded = Folded(word);
    std::string nearest;
    std::size_t least = kLongestName + 1;
    for (const std::string& name : names) {
        const std::size_t distance = Distance(folded, Folded(name));
        if (distance < least) {
            nearest = name;
            least = distance;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view nearest) {
    return nearest.empty() ? "" : "; did you mean \"" + Escaped(nearest) + "\"?";
}

std::string Suggestion(std::string_view word, const std::vector<std::string>& names) {
    return DidYouMean(NearestName(word, names));
}

} // namespace veltrane::host
