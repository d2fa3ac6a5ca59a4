// Text: bytes a second of the byte-string functions, beside ICU called directly for the same result.
#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>

#include <benchmark/benchmark.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <string>
#include <vector>

using namespace MCXML_900;

namespace {

/// English; German and Japanese; Russian, whose other text is in capitals.
enum Kind { ASCII, MIXED, CAPITALS };

const char* const kPieces[] = {"The Quick Brown Fox jumps over the Lazy Dog 1234. ",
                               "Größe der Flächen in Süd-Österreich, 面積の合計 (km²). ", "площадь и размер 1234. "};

/// A text of about `bytes` bytes.
std::string Text(const std::string& piece, std::size_t bytes) {
    std::string text;
    while (text.size() + piece.size() <= bytes || text.empty()) {
        text += piece;
    }
    return text;
}

/// The same with its ASCII letters in upper case.
std::string Upper(std::string text) {
    for (char& c : text) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    }
    return text;
}

struct Pair {
    explicit Pair(const benchmark::State& state) {
        const auto bytes = static_cast<std::size_t>(state.range(1));
        a = Text(kPieces[state.range(0)], bytes);
        b = state.range(0) == CAPITALS ? Text("ПЛОЩАДЬ И РАЗМЕР 1234. ", bytes) : Upper(a);
    }
    std::string a;
    std::string b;
};

/// Compares the two texts of a size and a kind by `equal`, which must say 1.
template <class Equal>
void Compare(benchmark::State& state, Equal equal) {
    const Pair texts(state);
    for (auto _ : state) {
        if (equal(texts.a, texts.b) != 1) {
            state.SkipWithError("the texts must be equal");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(texts.a.size()));
}

int Length(const std::string& text) {
    return static_cast<int>(text.size());
}

void CompareUtf8(benchmark::State& state) {
    Compare(state, [](const std::string& a, const std::string& b) {
        return KORDMBqstricmp_8(a.data(), Length(a), b.data(), Length(b), nullptr);
    });
}

/// ICU's steps and folding, one code point after the other.
void CompareUtf8ByIcuSteps(benchmark::State& state) {
    Compare(state, [](const std::string& a, const std::string& b) {
        std::int32_t i = 0;
        std::int32_t j = 0;
        while (i < Length(a) && j < Length(b)) {
            UChar32 x = 0;
            UChar32 y = 0;
            U8_NEXT(a.data(), i, Length(a), x);
            U8_NEXT(b.data(), j, Length(b), y);
            if (u_tolower(x) != u_tolower(y)) {
                return 0;
            }
        }
        return i == Length(a) && j == Length(b) ? 1 : 0;
    });
}

/// ICU's comparison of UTF-16 texts, with the conversion to them.
void CompareUtf8ByIcuStrings(benchmark::State& state) {
    std::vector<UChar> x(static_cast<std::size_t>(state.range(1)) + 100);
    std::vector<UChar> y(x.size());
    Compare(state, [&](const std::string& a, const std::string& b) {
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t xLength = 0;
        std::int32_t yLength = 0;
        u_strFromUTF8(x.data(), static_cast<std::int32_t>(x.size()), &xLength, a.data(), Length(a), &error);
        u_strFromUTF8(y.data(), static_cast<std::int32_t>(y.size()), &yLength, b.data(), Length(b), &error);
        return u_strCaseCompare(x.data(), xLength, y.data(), yLength, U_FOLD_CASE_DEFAULT, &error) == 0 ? 1 : 0;
    });
}

/// The code page of the C locale here, whose converter reads UTF-8.
void CompareCodePage(benchmark::State& state) {
    Compare(state, [](const std::string& a, const std::string& b) {
        return KORDMBqstricmp_C(a.data(), Length(a), b.data(), Length(b), nullptr);
    });
}

/// Converters of one's own, kept from call to call.
void CompareCodePageByIcuSteps(benchmark::State& state) {
    auto* first = static_cast<UConverter*>(KORDMBConverterNew_C(nullptr));
    auto* second = static_cast<UConverter*>(KORDMBConverterNew_C(nullptr));
    Compare(state, [=](const std::string& a, const std::string& b) {
        UErrorCode error = U_ZERO_ERROR;
        const char* i = a.data();
        const char* j = b.data();
        const char* iEnd = i + a.size();
        const char* jEnd = j + b.size();
        ucnv_resetToUnicode(first);
        ucnv_resetToUnicode(second);
        while (i < iEnd && j < jEnd) {
            const UChar32 x = ucnv_getNextUChar(first, &i, iEnd, &error);
            const UChar32 y = ucnv_getNextUChar(second, &j, jEnd, &error);
            if (u_tolower(x) != u_tolower(y)) {
                return 0;
            }
        }
        return i == iEnd && j == jEnd ? 1 : 0;
    });
    ucnv_close(first);
    ucnv_close(second);
}

void Span(benchmark::State& state) {
    const std::string text = Text(kPieces[state.range(0)], static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(KORDMBstrcspn_8(text.c_str(), "\xE2\x82\xAC;"));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * Length(text));
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"kind", "bytes"})->ArgsProduct({{ASCII, MIXED, CAPITALS}, {50, 4000}});
}

BENCHMARK(CompareUtf8)->Apply(Sizes);
BENCHMARK(CompareUtf8ByIcuSteps)->Apply(Sizes);
BENCHMARK(CompareUtf8ByIcuStrings)->Apply(Sizes);
BENCHMARK(CompareCodePage)->Apply(Sizes);
BENCHMARK(CompareCodePageByIcuSteps)->Apply(Sizes);
BENCHMARK(Span)->Apply(Sizes);

} // namespace
