// A plain pattern finds in a text of ASCII what the engine of regular expressions finds, match by match, or leaves it.
#include "kit/functions/texts/plain_pattern.h"
#include "kit/functions/texts/regex.h"
#include "models/expressions/random_expressions.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using veltrane::tests::Below;
using veltrane::tests::Random;
using veltrane_kit::standard::Pattern;
using veltrane_kit::standard::PlainPattern;
using veltrane_kit::standard::Regex;

using Matches = std::vector<std::pair<std::size_t, std::size_t>>;

icu::UnicodeString Characters(const std::string& text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

Matches OfEngine(const std::string& expression, const std::string& subject) {
    const Pattern pattern(Characters(expression));
    EXPECT_TRUE(pattern.IsUsable()) << expression;
    Regex regex(pattern);
    const icu::UnicodeString characters = Characters(subject);
    regex.Start(characters);
    Matches matches;
    while (regex.Find().value_or(false)) {
        matches.emplace_back(regex.Begin(), regex.End());
    }
    return matches;
}

/// @return none where a search is left to the engine
std::optional<Matches> OfPlain(const PlainPattern& pattern, const std::string& subject) {
    Matches matches;
    std::size_t from = 0;
    while (from <= subject.size()) {
        const std::optional<PlainPattern::Match> match = pattern.Find(subject, from);
        if (!match) {
            return std::nullopt;
        }
        if (match->begin == std::string::npos) {
            break;
        }
        matches.emplace_back(match->begin, match->end);
        from = match->end + (match->begin == match->end ? 1 : 0);
    }
    return matches;
}

template <std::size_t kCount>
std::string OneOf(Random& random, const char* const (&choices)[kCount]) {
    return choices[Below(random, static_cast<int>(kCount))];
}

std::string RandomPattern(Random& random) {
    static const char* const kCharacters[] = {"a",     "b",      "[ab]",  "[^a]", ".",       "\\d",    "\\w",
                                              "[0-9]", "[a-c_]", "\\.",   "-",    "[^0-9a]", "\\D",    "\\W",
                                              "\\$",   "(a)",    "a|b",   "\\s",  "[a-]",    "[[a]b]", "1",
                                              "[b^]",  ":",      "[a:b]", "\\bx", "#",       "[ -]"};
    static const char* const kTimes[] = {"", "", "", "*", "+", "?", "{2}", "{1,3}", "{0,2}", "{2,}", "*?", "++"};
    std::string pattern = Below(random, 8) == 0 ? "^" : "";
    for (int i = 1 + Below(random, 4); i > 0; --i) {
        pattern += OneOf(random, kCharacters) + OneOf(random, kTimes);
    }
    return pattern + (Below(random, 8) == 0 ? "$" : "");
}

std::string RandomSubject(Random& random) {
    static const std::string kBytes = std::string("aaabbc1.-_ $^#:\n\t") + '\0' + '\x7F' + "Z9x]";
    std::string subject;
    for (int i = Below(random, 24); i > 0; --i) {
        subject += kBytes[static_cast<std::size_t>(Below(random, static_cast<int>(kBytes.size())))];
    }
    return subject;
}

TEST(PlainPatterns, FindWhatTheEngineFinds) {
    Random random(20270);
    int plain = 0;
    std::size_t matches = 0;
    for (int round = 0; round < 6000; ++round) {
        const std::string expression = RandomPattern(random);
        const std::optional<PlainPattern> pattern = PlainPattern::Of(expression);
        if (!pattern) {
            continue;
        }
        ++plain;
        for (int i = 0; i < 20; ++i) {
            const std::string subject = RandomSubject(random);
            const std::optional<Matches> found = OfPlain(*pattern, subject);
            ASSERT_TRUE(found) << expression;
            ASSERT_EQ(*found, OfEngine(expression, subject)) << expression << " in \"" << subject << '"';
            matches += found->size();
        }
    }
    EXPECT_GT(plain, 1500);
    EXPECT_GT(matches, 20000U);
}

TEST(PlainPatterns, TakeEachCharacterThatTheEngineTakes) {
    for (const char* expression :
         {".", "\\d", "\\D", "\\w", "\\W", "[^a]", "[^a-z0-9_]", "[ ,;/@%!\"'=<>~#]", "#", "~"}) {
        const std::optional<PlainPattern> pattern = PlainPattern::Of(expression);
        ASSERT_TRUE(pattern) << expression;
        for (int byte = 0; byte < 0x80; ++byte) {
            const std::string subject(1, static_cast<char>(byte));
            EXPECT_EQ(OfPlain(*pattern, subject), OfEngine(expression, subject)) << expression << ", byte " << byte;
        }
    }
}

TEST(PlainPatterns, AreNoOthers) {
    for (const char* expression :
         {"",       "^",  "$",   "(a)", "a|b", "a*?",      "a*+",  "a{",          "a{,2}", "a{3,2}", "a{0}",
          "a{300}", "[",  "[]",  "[^]", "[a",  "[z-a]",    "[a-]", "[[:alpha:]]", "[:a:]", "[a&&b]", "\\s",
          "\\1",    "\\", "a**", "$a",  "a^",  "\xC3\xA9", "*"}) {
        EXPECT_FALSE(PlainPattern::Of(expression)) << expression;
    }
}

TEST(PlainPatterns, LeaveALongSearchToTheEngine) {
    const std::optional<PlainPattern> pattern = PlainPattern::Of("a*a*a*a*a*a*b");
    ASSERT_TRUE(pattern);
    EXPECT_FALSE(pattern->Find(std::string(PlainPattern::kLongestSubject, 'a'), 0));
    const std::optional<PlainPattern::Match> found = pattern->Find("aaab", 0);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->end, 4U);
}

} // namespace
