// Conversions between UTF-8, UTF-16 and a code page: bytes of UTF-8 a second, beside ICU called directly for the same
// result with a converter that is kept from call to call.
#include <MCXML_900/ExtNameStr.h>
#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBTranscode.h>

#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <string>
#include <vector>

using namespace MCXML_900;

namespace {

/// English; German with signs and quotes, all of it in code page 1252.
enum Kind { ASCII, MIXED };

const char* const kPieces[] = {"The Quick Brown Fox jumps over the Lazy Dog 1234. ",
                               "Größe der Flächen in Süd-Österreich („brutto“), 12 €. "};

constexpr const char* kCodePage = "1252";

/// A text in all forms, with buffers that hold any of them.
struct Sample {
    explicit Sample(const benchmark::State& state) {
        const std::string piece = kPieces[state.range(0)];
        while (utf8.empty() || utf8.size() + piece.size() <= static_cast<std::size_t>(state.range(1))) {
            utf8 += piece;
        }
        KORDMBU8ToU16(utf16, utf8);
        bytes.resize(4 * utf8.size());
        units.resize(2 * utf8.size());
    }
    std::string utf8;
    std::u16string utf16;
    std::string bytes;
    std::u16string units;
};

template <class Text>
int Size(const Text& text) {
    return static_cast<int>(text.size());
}

/// Runs a conversion that gives its length, which is never 0.
template <class Convert>
void Run(benchmark::State& state, Convert convert) {
    Sample sample(state);
    for (auto _ : state) {
        if (convert(sample) <= 0) {
            state.SkipWithError("nothing converted");
            break;
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * Size(sample.utf8));
}

/// A converter for the time of a benchmark.
class Kept {
public:
    explicit Kept(const char* name) : fConverter(static_cast<UConverter*>(KORDMBConverterNew_C(name))) {}
    ~Kept() { ucnv_close(fConverter); }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;
    operator UConverter*() const { return fConverter; }

private:
    UConverter* fConverter;
};

void Utf8ToUtf16(benchmark::State& state) {
    Run(state,
        [](Sample& s) { return KORDMB8to16(s.units.data(), Size(s.units), s.utf8.data(), Size(s.utf8), nullptr); });
}

void Utf8ToUtf16ByIcu(benchmark::State& state) {
    Run(state, [](Sample& s) {
        UErrorCode error = U_ZERO_ERROR;
        int length = 0;
        u_strFromUTF8(s.units.data(), Size(s.units), &length, s.utf8.data(), Size(s.utf8), &error);
        return length;
    });
}

void Utf8ToUtf16String(benchmark::State& state) {
    std::u16string out;
    Run(state, [&](Sample& s) {
        KORDMBU8ToU16(out, s.utf8);
        return Size(out);
    });
}

void Utf16ToUtf8(benchmark::State& state) {
    Run(state,
        [](Sample& s) { return KORDMB16to8(s.bytes.data(), Size(s.bytes), s.utf16.data(), Size(s.utf16), nullptr); });
}

void Utf16ToUtf8ByIcu(benchmark::State& state) {
    Run(state, [](Sample& s) {
        UErrorCode error = U_ZERO_ERROR;
        int length = 0;
        u_strToUTF8(s.bytes.data(), Size(s.bytes), &length, s.utf16.data(), Size(s.utf16), &error);
        return length;
    });
}

void Utf16ToUtf8String(benchmark::State& state) {
    std::string out;
    Run(state, [&](Sample& s) {
        KORDMBU16ToU8(out, s.utf16);
        return Size(out);
    });
}

/// By a converter of the caller's own, and by the default one, which is cloned for each call.
void Utf8ToCodePage(benchmark::State& state) {
    const Kept converter(kCodePage);
    Run(state, [&](Sample& s) {
        return KORDMB8toCodePage(converter, s.bytes.data(), Size(s.bytes), s.utf8.data(), Size(s.utf8), nullptr);
    });
}

void Utf8ToCodePageByIcu(benchmark::State& state) {
    const Kept converter(kCodePage);
    Run(state, [&](Sample& s) {
        UErrorCode error = U_ZERO_ERROR;
        return ucnv_fromAlgorithmic(converter, UCNV_UTF8, s.bytes.data(), Size(s.bytes), s.utf8.data(), Size(s.utf8),
                                    &error);
    });
}

void Utf8ToCodePageString(benchmark::State& state) {
    const Kept converter(kCodePage);
    std::string out;
    Run(state, [&](Sample& s) {
        KORDMBU8ToCodePage(converter, out, s.utf8);
        return Size(out);
    });
}

void Utf8ToDefaultCodePage(benchmark::State& state) {
    Run(state, [](Sample& s) {
        return KORDMB8toCodePage(nullptr, s.bytes.data(), Size(s.bytes), s.utf8.data(), Size(s.utf8), nullptr);
    });
}

void CodePageToUtf8(benchmark::State& state) {
    const Kept converter(kCodePage);
    std::string codePage;
    Run(state, [&](Sample& s) {
        if (codePage.empty()) {
            KORDMBU8ToCodePage(converter, codePage, s.utf8);
        }
        return KORDMBCodePageto8(converter, s.bytes.data(), Size(s.bytes), codePage.data(), Size(codePage), nullptr);
    });
}

void CodePageToUtf8ByIcu(benchmark::State& state) {
    const Kept converter(kCodePage);
    std::string codePage;
    Run(state, [&](Sample& s) {
        if (codePage.empty()) {
            KORDMBU8ToCodePage(converter, codePage, s.utf8);
        }
        UErrorCode error = U_ZERO_ERROR;
        return ucnv_toAlgorithmic(UCNV_UTF8, converter, s.bytes.data(), Size(s.bytes), codePage.data(), Size(codePage),
                                  &error);
    });
}

/// All forms of a name at once.
void Name(benchmark::State& state) {
    ExtNameStr name;
    Run(state, [&](Sample& s) {
        name.SetU8(s.utf8);
        return Size(name.GetU16());
    });
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"kind", "bytes"})->ArgsProduct({{ASCII, MIXED}, {50, 4000}});
}

BENCHMARK(Utf8ToUtf16)->Apply(Sizes);
BENCHMARK(Utf8ToUtf16ByIcu)->Apply(Sizes);
BENCHMARK(Utf8ToUtf16String)->Apply(Sizes);
BENCHMARK(Utf16ToUtf8)->Apply(Sizes);
BENCHMARK(Utf16ToUtf8ByIcu)->Apply(Sizes);
BENCHMARK(Utf16ToUtf8String)->Apply(Sizes);
BENCHMARK(Utf8ToCodePage)->Apply(Sizes);
BENCHMARK(Utf8ToCodePageByIcu)->Apply(Sizes);
BENCHMARK(Utf8ToCodePageString)->Apply(Sizes);
BENCHMARK(Utf8ToDefaultCodePage)->Apply(Sizes);
BENCHMARK(CodePageToUtf8)->Apply(Sizes);
BENCHMARK(CodePageToUtf8ByIcu)->Apply(Sizes);
BENCHMARK(Name)->Apply(Sizes);

} // namespace
