#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_PLAIN_PATTERN_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_PLAIN_PATTERN_H

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace veltrane_kit::standard {

/// A regular expression that is a row of characters and sets of them, each of which may come several times: "[0-9]+",
/// "^a.*b$". It finds in short texts of ASCII what Regex finds, in the bytes as they stand. It never changes; threads
/// share it.
class PlainPattern {
public:
    /// The longest text that is searched.
    static constexpr std::size_t kLongestSubject = 256;

    /// @return none for any other expression, and for what is none
    static std::optional<PlainPattern> Of(std::string_view expression);

    struct Match {
        std::size_t begin = std::string_view::npos; ///< npos: there is none
        std::size_t end = 0;
    };

    /// The first match that begins at a place or behind it.
    /// @param subject of ASCII, no longer than kLongestSubject
    /// @return none for a search of so many steps that its bounds have to be looked at
    std::optional<Match> Find(std::string_view subject, std::size_t from) const;

private:
    /// What stands in one place of a match.
    struct Item {
        std::array<bool, 256> takes{};
        std::size_t least = 1;
        std::size_t most = 1;
    };
    class Search;

    bool AddItem(std::string_view& expression);

    std::vector<Item> fItems;
    bool fIsAtBegin = false;
    bool fIsAtEnd = false;
};

} // namespace veltrane_kit::standard

#endif
