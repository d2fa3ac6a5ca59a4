// Ten functions of texts over two fields, in columns, case by case, and by a hand-written loop over the same columns:
// rows a second of each, `gain`, the time case by case over that of the columns, and `ratio`, the time of the columns
// over that of the loop.
#include "column_blocks.h"
#include "kit/model/transformation_columns.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/StringValue.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;
using veltrane::InputColumn;

namespace {

/// @param hasPatterns whether regular expressions are among the functions
std::string TextDocument(bool hasPatterns) {
    const std::string s = "<FieldRef field='s'/>";
    const std::string u = "<FieldRef field='t'/>";
    const auto apply = [](const std::string& function, const std::string& arguments) {
        return "<Apply function='" + function + "'>" + arguments + "</Apply>";
    };
    const std::string functions[] = {
        apply("uppercase", s),
        apply("lowercase", u),
        apply("trimBlanks", s),
        apply("substring", s + "<Constant>2</Constant><Constant>4</Constant>"),
        apply("concat", s + "<Constant>-</Constant>" + u),
        apply("stringLength", s),
        apply("equal", s + "<Constant>green 17</Constant>"),
        apply("isIn", u + "<Constant>red 1</Constant><Constant>blue 2</Constant><Constant>white 3</Constant>"),
        hasPatterns ? apply("matches", s + "<Constant>e+n</Constant>") : apply("lessThan", s + u),
        hasPatterns ? apply("replace", u + "<Constant>[0-9]+</Constant><Constant>#</Constant>")
                    : apply("substring", u + "<Constant>1</Constant><Constant>3</Constant>"),
    };
    const char* const types[] = {"string",  "string",  "string",  "string",  "string",
                                 "integer", "boolean", "boolean", "boolean", "string"};
    std::string document = "<PMML version='4.4' xmlns='http://www.dmg.org/PMML-4_4'><Header/><DataDictionary>"
                           "<DataField name='s' optype='categorical' dataType='string'/>"
                           "<DataField name='t' optype='categorical' dataType='string'/></DataDictionary>"
                           "<TransformationDictionary>";
    for (int i = 0; i < 10; ++i) {
        document += "<DerivedField name='d" + std::to_string(i) + "' optype='categorical' dataType='" + types[i] +
                    "'>" + functions[i] + "</DerivedField>";
    }
    return document + "</TransformationDictionary></PMML>";
}

/// Two fields of texts over many blocks, which come one after the other and again.
struct TextRows {
    TextRows(int distinct, std::size_t blocks) : rows(blocks * kRows) {
        static const char* const kColours[] = {"red", "green", "blue", "white"};
        for (int i = 0; i < distinct; ++i) {
            all.push_back(std::string(kColours[i % 4]) + " " + std::to_string(i));
        }
        dictionary.assign(all.begin(), all.end());
        std::mt19937 random(1);
        for (std::size_t field = 0; field < 2; ++field) {
            for (std::size_t row = 0; row < rows; ++row) {
                const auto code = static_cast<std::int32_t>(random() % static_cast<unsigned>(distinct));
                codes[field].push_back(code);
                bytes[field] += dictionary[static_cast<std::size_t>(code)];
            }
            // The texts of a column lie one behind the other, as they do in files and batches of columns.
            const char* next = bytes[field].data();
            for (const std::int32_t code : codes[field]) {
                texts[field].emplace_back(next, dictionary[static_cast<std::size_t>(code)].size());
                next += texts[field].back().size();
            }
        }
    }

    InputColumn Column(std::size_t field, std::size_t first, bool hasDictionary) const {
        InputColumn column;
        if (hasDictionary) {
            column.codes = codes[field].data() + first;
            column.dictionary = dictionary.data();
            column.dictionarySize = dictionary.size();
            column.dictionaryMark = 1;
        } else {
            column.texts = texts[field].data() + first;
        }
        return column;
    }

    std::size_t rows;
    std::vector<std::string> all;
    std::vector<std::string_view> dictionary;
    std::array<std::vector<std::int32_t>, 2> codes;
    std::array<std::string, 2> bytes;
    std::array<std::vector<std::string_view>, 2> texts;
};

/// The same results by hand, for ASCII; texts that are made stand one behind the other.
class Loop {
public:
    explicit Loop(bool hasPatterns) : fHasPatterns(hasPatterns) {}

    void Run(const std::string_view* s, const std::string_view* t) {
        fMade.clear();
        for (std::size_t row = 0; row < kRows; ++row) {
            ComputeRow(row, s[row], t[row]);
        }
        benchmark::DoNotOptimize(fTexts.data());
        benchmark::DoNotOptimize(fNumbers.data());
        benchmark::ClobberMemory();
    }

private:
    void ComputeRow(std::size_t row, std::string_view s, std::string_view t) {
        fTexts[0][row] = Turned(s, 'a', 'z', 'A' - 'a');
        fTexts[1][row] = Turned(t, 'A', 'Z', 'a' - 'A');
        fTexts[2][row] = Trimmed(s);
        fTexts[3][row] = s.substr(std::min<std::size_t>(1, s.size()), 4);
        const std::size_t before = fMade.size();
        fMade.insert(fMade.end(), s.begin(), s.end());
        fMade.push_back('-');
        fMade.insert(fMade.end(), t.begin(), t.end());
        fTexts[4][row] = MadeFrom(before);
        fNumbers[0][row] = static_cast<double>(s.size());
        fNumbers[1][row] = s == "green 17" ? 1.0 : 0.0;
        fNumbers[2][row] = t == "red 1" || t == "blue 2" || t == "white 3" ? 1.0 : 0.0;
        fNumbers[3][row] = (fHasPatterns ? Matches(s) : s < t) ? 1.0 : 0.0;
        fTexts[5][row] = fHasPatterns ? WithoutDigits(t) : t.substr(0, 3);
    }

    /// The room never moves: it was made large enough.
    std::string_view MadeFrom(std::size_t before) const { return {fMade.data() + before, fMade.size() - before}; }

    std::string_view Turned(std::string_view text, char first, char last, int distance) {
        const std::size_t before = fMade.size();
        for (const char byte : text) {
            fMade.push_back(static_cast<char>(byte >= first && byte <= last ? byte + distance : byte));
        }
        return MadeFrom(before);
    }

    static std::string_view Trimmed(std::string_view text) {
        const auto isBlank = [](char byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; };
        while (!text.empty() && isBlank(text.front())) {
            text.remove_prefix(1);
        }
        while (!text.empty() && isBlank(text.back())) {
            text.remove_suffix(1);
        }
        return text;
    }

    /// Of "e+n".
    static bool Matches(std::string_view text) {
        const std::size_t at = text.find("en");
        return at != text.npos;
    }

    /// Each run of them becomes a sign.
    std::string_view WithoutDigits(std::string_view text) {
        const std::size_t before = fMade.size();
        bool isInRun = false;
        for (const char byte : text) {
            const bool isDigit = byte >= '0' && byte <= '9';
            if (!isDigit || !isInRun) {
                fMade.push_back(isDigit ? '#' : byte);
            }
            isInRun = isDigit;
        }
        return MadeFrom(before);
    }

    struct Room : std::vector<char> {
        Room() { reserve(std::size_t{1} << 20U); }
    };

    bool fHasPatterns;
    Room fMade;
    std::vector<std::vector<std::string_view>> fTexts{6, std::vector<std::string_view>(kRows)};
    std::vector<std::vector<double>> fNumbers{4, std::vector<double>(kRows)};
};

/// The document over the same rows on its roads.
class Work {
public:
    Work(const TextRows& cells, bool hasDictionary, bool hasPatterns)
        : fCells(cells), fHasDictionary(hasDictionary), fColumns(Read(hasPatterns)), fLoop(hasPatterns) {
        std::istringstream in(TextDocument(hasPatterns));
        fCases = veltrane_kit::Transformations::Read(in, "UTF-8");
        for (std::size_t row = 0; row < cells.rows; ++row) {
            fRecords.push_back(std::make_unique<CaseRecord>(2));
            for (std::size_t field = 0; field < 2; ++field) {
                fRecords[row]->Add(fColumns.scorer->Inputs()[field].name,
                                   new StringValue(std::string(cells.texts[field][row])));
            }
        }
    }

    void InColumns(std::size_t block) {
        for (std::size_t field = 0; field < 2; ++field) {
            fColumns.inputs[field] = fCells.Column(field, First(block), fHasDictionary);
        }
        fColumns.Score();
    }

    void CaseByCase(std::size_t block) {
        for (std::size_t row = First(block); row < First(block) + kRows; ++row) {
            fCases->Compute(*fRecords[row]);
        }
        benchmark::ClobberMemory();
    }

    void ByHand(std::size_t block) {
        fLoop.Run(fCells.texts[0].data() + First(block), fCells.texts[1].data() + First(block));
    }

private:
    static std::shared_ptr<const veltrane::ColumnScorer> Read(bool hasPatterns) {
        std::istringstream in(TextDocument(hasPatterns));
        return std::make_shared<veltrane_kit::TransformationColumns>(veltrane_kit::Transformations::Read(in, "UTF-8"));
    }

    std::size_t First(std::size_t block) const { return block * kRows % fCells.rows; }

    const TextRows& fCells;
    bool fHasDictionary;
    Columns fColumns;
    Loop fLoop;
    std::unique_ptr<veltrane_kit::Transformations> fCases;
    std::vector<std::unique_ptr<CaseRecord>> fRecords;
};

/// @param distinct how many different texts the fields have
void Texts(benchmark::State& state, int distinct, bool hasDictionary, bool hasPatterns) {
    constexpr int kTurn = 20;
    const TextRows cells(distinct, distinct > 1000 ? 100 : 1);
    Work work(cells, hasDictionary, hasPatterns);
    double inColumns = 0.0;
    double caseByCase = 0.0;
    double byHand = 0.0;
    std::size_t block = 0;
    for (auto _ : state) {
        inColumns += SecondsOf(kTurn, [&](int i) { work.InColumns(block + static_cast<std::size_t>(i)); });
        caseByCase += SecondsOf(kTurn, [&](int i) { work.CaseByCase(block + static_cast<std::size_t>(i)); });
        byHand += SecondsOf(kTurn, [&](int i) { work.ByHand(block + static_cast<std::size_t>(i)); });
        block += kTurn;
    }
    const double rows = static_cast<double>(state.iterations()) * kTurn * kRows;
    state.counters["rows/s"] = rows / inColumns;
    state.counters["case by case rows/s"] = rows / caseByCase;
    state.counters["gain"] = caseByCase / inColumns;
    state.counters["peer rows/s"] = rows / byHand;
    state.counters["ratio"] = inColumns / byHand;
}

void TextsAndPatterns(benchmark::State& state, int distinct, bool hasDictionary) {
    Texts(state, distinct, hasDictionary, true);
}

BENCHMARK_CAPTURE(Texts, FromADictionaryOf100, 100, true, false);
BENCHMARK_CAPTURE(Texts, Of100, 100, false, false);
BENCHMARK_CAPTURE(Texts, NearlyAllDifferent, 1000000, false, false);
BENCHMARK_CAPTURE(TextsAndPatterns, FromADictionaryOf100, 100, true);
BENCHMARK_CAPTURE(TextsAndPatterns, Of100, 100, false);
BENCHMARK_CAPTURE(TextsAndPatterns, NearlyAllDifferent, 1000000, false);

} // namespace
