// A million random texts through every function of the UTF-8 family, against the slowest and plainest reading of each.
#include "support/byte_text.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <random>
#include <set>

namespace {

using namespace MCXML_900;
using veltrane::tests::GuardedBuffer;
using veltrane::tests::Hexadecimal;

constexpr int kTexts = 1000000;

struct Unit {
    long value;
    int length;
    bool proper;
};

/// The number that `length` bytes from `at` spell, -1 when their bits don't have the pattern of that length.
long Spelled(const std::string& text, std::size_t at, int length) {
    static const int kLeads[] = {0x00, 0xC0, 0xE0, 0xF0};
    static const int kMasks[] = {0x80, 0xE0, 0xF0, 0xF8};
    if (at + static_cast<std::size_t>(length) > text.size()) {
        return -1;
    }
    const int lead = static_cast<unsigned char>(text[at]);
    if ((lead & kMasks[length - 1]) != kLeads[length - 1]) {
        return -1;
    }
    long value = lead & ~kMasks[length - 1];
    for (int i = 1; i < length; ++i) {
        const int trail = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
        if ((trail & 0xC0) != 0x80) {
            return -1;
        }
        value = value * 64 + (trail & 0x3F);
    }
    return value;
}

/// The unit at a place: the shortest spelling of a code point, or else a byte.
Unit UnitAt(const std::string& text, std::size_t at) {
    static const long kFirst[] = {0, 0x80, 0x800, 0x10000};
    for (int length = 1; length <= 4; ++length) {
        const long value = Spelled(text, at, length);
        if (value >= kFirst[length - 1] && value <= 0x10FFFF) {
            return {value, length, true};
        }
    }
    return {static_cast<unsigned char>(text[at]), 1, false};
}

bool IsStrict(const Unit& unit) {
    const bool surrogate = unit.value >= 0xD800 && unit.value <= 0xDFFF;
    const bool noncharacter = (unit.value >= 0xFDD0 && unit.value <= 0xFDEF) || (unit.value & 0xFFFE) == 0xFFFE;
    return unit.proper && !surrogate && !noncharacter;
}

std::vector<Unit> Units(const std::string& text) {
    std::vector<Unit> units;
    for (std::size_t at = 0; at < text.size(); at += static_cast<std::size_t>(units.back().length)) {
        units.push_back(UnitAt(text, at));
    }
    return units;
}

int LengthByLead(const std::string& text) {
    const int lead = static_cast<unsigned char>(text[0]);
    const int announced = lead >= 0xF8 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    return std::min(announced, std::max(1, static_cast<int>(text.size())));
}

int StrictLength(const std::string& text, int n) {
    const std::string seen = text.substr(0, n < 0 ? std::string::npos : static_cast<std::size_t>(n));
    if (seen.empty()) {
        return 0;
    }
    const Unit unit = UnitAt(seen, 0);
    return IsStrict(unit) ? unit.length : -1;
}

/// The bytes of the strict character that ends before index `i`, 0 for none.
int StrictBefore(const std::string& text, int i) {
    for (int length = 1; length <= std::min(4, i); ++length) {
        const Unit unit = UnitAt(text.substr(0, static_cast<std::size_t>(i)), static_cast<std::size_t>(i - length));
        if (unit.length == length && IsStrict(unit)) {
            return length;
        }
    }
    return 0;
}

std::string Copy(const std::string& text, int n) {
    std::string copy = text.substr(0, static_cast<std::size_t>(n));
    while (!copy.empty() && StrictBefore(copy, static_cast<int>(copy.size())) == 0) {
        copy.pop_back();
    }
    copy.resize(static_cast<std::size_t>(n), '\0');
    return copy;
}

/// The places of a code point by the leads alone; a cut character at the end counts for nothing.
std::vector<std::size_t> Places(const std::string& text, long ch) {
    std::vector<std::size_t> places;
    for (std::size_t at = 0; at < text.size();) {
        const int lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0x80 ? 2 : 1;
        if (at + length > text.size()) {
            break;
        }
        long value = length == 1 ? lead : length == 2 ? lead % 32 : length == 3 ? lead % 16 : lead % 8;
        for (std::size_t i = 1; i < length; ++i) {
            value = value * 64 + static_cast<unsigned char>(text[at + i]) % 64;
        }
        if (value == ch) {
            places.push_back(at);
        }
        at += length;
    }
    return places;
}

std::size_t LengthWithout(const std::string& text, const std::string& reject) {
    std::set<long> rejected;
    for (const Unit& unit : Units(reject)) {
        rejected.insert(unit.value);
    }
    std::size_t at = 0;
    for (const Unit& unit : Units(text)) {
        if (rejected.count(unit.value) != 0) {
            break;
        }
        at += static_cast<std::size_t>(unit.length);
    }
    return at;
}

int Order(const std::string& a, const std::string& b, int& status) {
    const std::vector<Unit> unitsOfA = Units(a);
    const std::vector<Unit> unitsOfB = Units(b);
    auto fold = [&status](const Unit& unit) {
        status = unit.proper ? status : 3;
        return unit.proper ? u_tolower(static_cast<UChar32>(unit.value)) : unit.value;
    };
    for (std::size_t i = 0; i < std::min(unitsOfA.size(), unitsOfB.size()); ++i) {
        const long difference = fold(unitsOfA[i]) - fold(unitsOfB[i]);
        if (difference != 0) {
            return difference < 0 ? -1 : 1;
        }
    }
    return unitsOfA.size() == unitsOfB.size() ? 0 : unitsOfA.size() < unitsOfB.size() ? -1 : 1;
}

/// Texts of characters whole and broken, in every mixture.
class TextSource {
public:
    int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(fEngine); }

    std::string Text(int pieces) {
        static const std::vector<std::string> kPieces = {"a",
                                                         "A",
                                                         "b",
                                                         "Z",
                                                         "\x7F",
                                                         "\xC3\x84",
                                                         "\xC3\xA4",
                                                         "\xE2\x82\xAC",
                                                         "\xE0\xA0\x80",
                                                         "\xED\xA0\x80",
                                                         "\xEF\xBF\xBE",
                                                         "\xEF\xB7\x90",
                                                         "\xF0\x9F\x98\x80",
                                                         "\xF0\x90\x90\x80",
                                                         "\xF0\x90\x90\xA8",
                                                         "\xF4\x8F\xBF\xBF",
                                                         "\xF4\x90\x80\x80",
                                                         "\xE2\x84\xAA",
                                                         "\xC0\x80"};
        std::string text;
        for (int i = Number(pieces + 1); i > 0; --i) {
            switch (Number(4)) {
            case 0:
                text.push_back(static_cast<char>(1 + Number(255)));
                break;
            case 1:
                text.push_back(static_cast<char>(0x80 + Number(0x40)));
                break;
            case 2:
                text.push_back(static_cast<char>(0xC0 + Number(0x40)));
                break;
            default:
                text += kPieces[static_cast<std::size_t>(Number(static_cast<int>(kPieces.size())))];
            }
        }
        return text;
    }

    /// The same text in another case, or with one byte changed, or another one.
    std::string Related(std::string text) {
        if (Number(4) == 0 || text.empty()) {
            return Text(8);
        }
        for (char& byte : text) {
            if (((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z')) && Number(2) == 0) {
                byte = static_cast<char>(byte ^ 0x20);
            }
        }
        if (Number(2) == 0) {
            text[static_cast<std::size_t>(Number(static_cast<int>(text.size())))] = static_cast<char>(1 + Number(255));
        }
        return text;
    }

private:
    std::mt19937 fEngine{20240607};
};

class Utf8Random : public testing::Test {
protected:
    TextSource source;
    GuardedBuffer buffer;
    GuardedBuffer other;
};

TEST_F(Utf8Random, Steps) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = source.Text(6);
        const char* bytes = buffer.Put(text);
        const int n = source.Number(7) - 1;
        const int at = source.Number(static_cast<int>(text.size()) + 1);
        EXPECT_EQ(KORDMBmblen_8(bytes, n), StrictLength(text, n)) << Hexadecimal(text) << ", n " << n;
        EXPECT_EQ(KORDMBmbclen_8(bytes), LengthByLead(text)) << Hexadecimal(text);
        EXPECT_EQ(KORDMBstrinc_8(bytes) - bytes, LengthByLead(text)) << Hexadecimal(text);
        const int before = at < 1 ? at : at - std::max(1, StrictBefore(text, at));
        EXPECT_EQ(KORDMBPreviousIndex_8(bytes, at), before) << Hexadecimal(text) << ", at " << at;
        EXPECT_EQ(KORDMBAnsiPrev_8(bytes, bytes + at) - bytes, before) << Hexadecimal(text) << ", at " << at;
    }
}

TEST_F(Utf8Random, Copies) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = source.Text(6);
        const int n = source.Number(12);
        char* target = other.Room(static_cast<std::size_t>(n));
        KORDMBstrncpy_8(target, buffer.Put(text), n);
        EXPECT_EQ(Hexadecimal({target, static_cast<std::size_t>(n)}), Hexadecimal(Copy(text, n)))
            << Hexadecimal(text) << ", n " << n;
    }
}

TEST_F(Utf8Random, Searches) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = source.Text(6);
        const std::string reject = source.Text(3);
        const std::vector<Unit> sought = Units(source.Number(2) == 0 ? text : reject);
        const long ch = sought.empty()
                            ? 0x20AC
                            : sought[static_cast<std::size_t>(source.Number(static_cast<int>(sought.size())))].value;
        const char* bytes = buffer.Put(text);
        EXPECT_EQ(KORDMBstrcspn_8(bytes, other.Put(reject)), LengthWithout(text, reject))
            << Hexadecimal(text) << ", reject " << Hexadecimal(reject);
        if (ch >= 0x80) {
            const std::vector<std::size_t> places = Places(text, ch);
            const char* first = KORDMBstrchr_8(bytes, static_cast<unsigned int>(ch));
            const char* last = KORDMBstrrchr_8(bytes, static_cast<unsigned int>(ch));
            EXPECT_EQ(first, places.empty() ? nullptr : bytes + places.front()) << Hexadecimal(text) << ", " << ch;
            EXPECT_EQ(last, places.empty() ? nullptr : bytes + places.back()) << Hexadecimal(text) << ", " << ch;
        }
    }
}

TEST_F(Utf8Random, Comparisons) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string a = source.Text(source.Number(20) == 0 ? 60 : 8);
        const std::string b = source.Related(a);
        const int n = source.Number(2) == 0 ? -1 : source.Number(12);
        const std::size_t counted = n < 0 ? std::string::npos : static_cast<std::size_t>(n);
        int status = 0;
        const int order = Order(a.substr(0, counted), b.substr(0, counted), status);
        int reported = -1;
        EXPECT_EQ(KORDMBqstricmp_8(buffer.Put(a), n, other.Put(b), n, &reported), order == 0 ? 1 : 0)
            << Hexadecimal(a) << ", " << Hexadecimal(b) << ", n " << n;
        EXPECT_EQ(reported, status) << Hexadecimal(a) << ", " << Hexadecimal(b) << ", n " << n;
        EXPECT_EQ(KORDMBstrnicmp_8(buffer.Put(a), other.Put(b), n), order)
            << Hexadecimal(a) << ", " << Hexadecimal(b) << ", n " << n;
    }
}

} // namespace
