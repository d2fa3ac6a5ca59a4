// Random texts, a million over the functions of each page, against the slowest and plainest reading of each: characters
// as the C library and ICU tell them, walked from the start.
#include "page.h"
#include "support/byte_text.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <cwchar>
#include <memory>
#include <random>
#include <set>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

constexpr int kTexts = 250000; // for each of the four tests

struct Unit {
    long value;
    int length;
    bool proper;
};

class CodePageRandom : public testing::Test {
protected:
    CodePageRandom() : engine(static_cast<unsigned int>(CurrentPage().number)) {
        for (int value = 0; value < 256; ++value) {
            leads[value] = MbLength(std::string(1, static_cast<char>(value)), 1) == -2;
        }
        UErrorCode error = U_ZERO_ERROR;
        converter.reset(ucnv_open(CurrentPage().converter, &error));
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
        if (U_FAILURE(error)) {
            throw std::runtime_error(u_errorName(error));
        }
    }

    int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(engine); }

    std::string Text(int pieces) {
        std::string text;
        const Page& page = CurrentPage();
        for (int i = Number(pieces + 1); i > 0; --i) {
            switch (Number(5)) {
            case 0:
                text.push_back(static_cast<char>(1 + Number(255)));
                break;
            case 1:
                text.push_back("aAbB@\\"[Number(6)]);
                break;
            case 2:
                text += Bytes(Number(2) == 0 ? page.upper : page.lower);
                break;
            default: // mostly a character of two bytes, where the page has any
                text.push_back(static_cast<char>(0x81 + Number(0x7E)));
                text.push_back(static_cast<char>(0x40 + Number(0xBF)));
            }
        }
        return text;
    }

    /// As mbrlen: -1 for invalid bytes, -2 for too few.
    static int MbLength(const std::string& text, std::size_t n) {
        std::mbstate_t state{};
        return static_cast<int>(std::mbrlen(text.data(), std::min(n, text.size()), &state));
    }

    static int Mblen(const std::string& text, std::size_t n) {
        return text.empty() ? 0 : std::max(-1, MbLength(text, n));
    }

    bool IsLead(char byte) const { return leads[static_cast<unsigned char>(byte)]; }

    /// The places where characters of at most two bytes begin, and the end.
    std::vector<int> Starts(const std::string& text) const {
        std::vector<int> starts;
        for (std::size_t at = 0; at < text.size();) {
            starts.push_back(static_cast<int>(at));
            at += IsLead(text[at]) && at + 1 < text.size() ? 2 : 1;
        }
        starts.push_back(static_cast<int>(text.size()));
        return starts;
    }

    Unit UnitAt(const std::string& text, std::size_t at) const {
        ucnv_resetToUnicode(converter.get());
        UErrorCode error = U_ZERO_ERROR;
        const char* start = text.data() + at;
        const char* end = start;
        const UChar32 value = ucnv_getNextUChar(converter.get(), &end, text.data() + text.size(), &error);
        return error == U_ZERO_ERROR ? Unit{value, static_cast<int>(end - start), true}
                                     : Unit{static_cast<unsigned char>(text[at]), 1, false};
    }

    std::vector<Unit> Units(const std::string& text) const {
        std::vector<Unit> units;
        for (std::size_t at = 0; at < text.size(); at += static_cast<std::size_t>(units.back().length)) {
            units.push_back(UnitAt(text, at));
        }
        return units;
    }

    struct Close {
        void operator()(UConverter* made) const { ucnv_close(made); }
    };
    std::mt19937 engine;
    bool leads[256];
    std::unique_ptr<UConverter, Close> converter;
    GuardedBuffer buffer;
    GuardedBuffer other;
};

TEST_F(CodePageRandom, Steps) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = Text(6);
        const char* bytes = buffer.Put(text);
        const int length = static_cast<int>(text.size());
        const std::vector<int> starts = Starts(text);
        const int n = Number(7) - 1;
        EXPECT_EQ(KORDMBmblen_C(bytes, n), Mblen(text, n < 0 ? text.size() : static_cast<std::size_t>(n)))
            << Hexadecimal(text) << ", n " << n;
        const int first = starts.size() > 1 ? starts[1] : 1;
        EXPECT_EQ(KORDMBmbclen_C(bytes), first) << Hexadecimal(text);
        EXPECT_EQ(KORDMBstrinc_C(bytes), bytes + first) << Hexadecimal(text);
        const int pos = Number(length + 3);
        const auto behind = std::upper_bound(starts.begin(), starts.end(), pos);
        EXPECT_EQ(KORDMBFindStart_C(bytes, pos), pos >= length ? length : *(behind - 1))
            << Hexadecimal(text) << ", pos " << pos;
        const int current = Number(length + 1);
        const auto from = std::lower_bound(starts.begin(), starts.end(), current);
        EXPECT_EQ(KORDMBAnsiPrev_C(bytes, bytes + current) - bytes, current == 0 ? 0 : *(from - 1))
            << Hexadecimal(text) << ", current " << current;
    }
}

TEST_F(CodePageRandom, Copies) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = Text(6);
        const int n = 1 + Number(12);
        const std::vector<int> starts = Starts(text);
        std::size_t last = 0;
        while (last + 1 < starts.size() && starts[last + 1] <= n) {
            ++last;
        }
        int kept = starts[last];
        if (last > 0 && Mblen(text.substr(static_cast<std::size_t>(starts[last - 1])),
                              static_cast<std::size_t>(kept - starts[last - 1])) < 0) {
            kept = starts[last - 1];
        }
        std::string expected = text.substr(0, static_cast<std::size_t>(kept));
        expected.resize(static_cast<std::size_t>(n), '\0');
        char* target = other.Room(static_cast<std::size_t>(n));
        KORDMBstrncpy_C(target, buffer.Put(text), n);
        EXPECT_EQ(Hexadecimal({target, static_cast<std::size_t>(n)}), Hexadecimal(expected))
            << Hexadecimal(text) << ", n " << n;
    }
}

TEST_F(CodePageRandom, Searches) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = Text(6);
        const std::string reject = Text(3);
        const int ch =
            text.empty() || Number(3) == 0
                ? 1 + Number(255)
                : static_cast<unsigned char>(text[static_cast<std::size_t>(Number(static_cast<int>(text.size())))]);
        std::vector<std::size_t> places;
        for (std::size_t at = 0; at < text.size();) {
            const bool hit = static_cast<unsigned char>(text[at]) == ch;
            if (hit) {
                places.push_back(at);
            }
            at += hit ? 1 : static_cast<std::size_t>(std::max(1, Mblen(text.substr(at), 5)));
        }
        const char* bytes = buffer.Put(text);
        EXPECT_EQ(KORDMBstrchr_C(bytes, static_cast<unsigned int>(ch)), places.empty() ? nullptr : bytes + places[0])
            << Hexadecimal(text) << ", " << ch;
        EXPECT_EQ(KORDMBstrrchr_C(bytes, static_cast<unsigned int>(ch)),
                  places.empty() ? nullptr : bytes + places.back())
            << Hexadecimal(text) << ", " << ch;
        std::set<long> rejected;
        for (const Unit& unit : Units(reject)) {
            rejected.insert(unit.value);
        }
        std::size_t span = 0;
        for (const Unit& unit : Units(text)) {
            if (rejected.count(unit.value) != 0) {
                break;
            }
            span += static_cast<std::size_t>(unit.length);
        }
        EXPECT_EQ(KORDMBstrcspn_C(bytes, other.Put(reject)), span)
            << Hexadecimal(text) << ", reject " << Hexadecimal(reject);
    }
}

TEST_F(CodePageRandom, DecodingAndComparisons) {
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string a = Text(6);
        std::string b = Number(4) == 0 ? Text(6) : a;
        if (!b.empty() && Number(2) == 0) {
            b[static_cast<std::size_t>(Number(static_cast<int>(b.size())))] ^= 0x20;
        }
        b = b.c_str(); // a NUL may have come in
        int status = 0;
        int order = 0;
        const std::vector<Unit> unitsOfA = Units(a);
        const std::vector<Unit> unitsOfB = Units(b);
        auto fold = [&status](const Unit& unit) {
            status = unit.proper ? status : 3;
            return unit.proper ? u_tolower(static_cast<UChar32>(unit.value)) : unit.value;
        };
        for (std::size_t k = 0; k < std::min(unitsOfA.size(), unitsOfB.size()) && order == 0; ++k) {
            const long difference = fold(unitsOfA[k]) - fold(unitsOfB[k]);
            order = difference < 0 ? -1 : difference > 0 ? 1 : 0;
        }
        if (order == 0 && unitsOfA.size() != unitsOfB.size()) {
            order = unitsOfA.size() < unitsOfB.size() ? -1 : 1;
        }
        int reported = -1;
        const char* bytes = buffer.Put(a);
        EXPECT_EQ(KORDMBstrnicmp_C(bytes, other.Put(b), -1), order) << Hexadecimal(a) << " | " << Hexadecimal(b);
        EXPECT_EQ(KORDMBqstricmp_C(bytes, -1, other.Put(b), -1, &reported), order == 0 ? 1 : 0)
            << Hexadecimal(a) << " | " << Hexadecimal(b);
        EXPECT_EQ(reported, status) << Hexadecimal(a) << " | " << Hexadecimal(b);

        if (!a.empty()) {
            const int pos = Number(static_cast<int>(a.size()));
            const Unit unit = UnitAt(a, static_cast<std::size_t>(pos));
            unsigned int value = 1;
            EXPECT_EQ(KORDMBU32Get_C(&value, bytes, pos, Number(2) == 0 ? -1 : static_cast<int>(a.size())),
                      unit.proper ? unit.length : -1)
                << Hexadecimal(a) << ", pos " << pos;
            EXPECT_EQ(value, unit.proper ? static_cast<unsigned int>(unit.value) : 0U) << Hexadecimal(a);
        }
    }
}

} // namespace
