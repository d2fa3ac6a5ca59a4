#ifndef VELTRANE_BENCHMARKS_COLUMN_BLOCKS_H
#define VELTRANE_BENCHMARKS_COLUMN_BLOCKS_H

#include "documents.h"
#include "turns.h"

#include <veltrane/column_scorer.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Blocks of rows for scorers of columns, beside hand-written loops over the same columns.
namespace veltrane::bench {

inline constexpr std::size_t kRows = ColumnScorer::kMostRows;
inline constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// A document in columns, with room for a block.
struct Columns {
    explicit Columns(std::shared_ptr<const ColumnScorer> shared) : scorer(std::move(shared)) {
        state = scorer->NewState();
        const std::size_t wanted = scorer->Inputs().size();
        const std::size_t outputs = scorer->Outputs().size();
        numbers.resize(wanted, std::vector<double>(kRows));
        texts.resize(wanted, std::vector<std::string_view>(kRows));
        codes.resize(wanted, std::vector<std::int32_t>(kRows));
        results.resize(outputs, std::vector<double>(kRows));
        codeResults.resize(outputs, std::vector<std::int32_t>(kRows));
        textResults.resize(outputs, std::vector<std::string_view>(kRows));
        inputs.resize(wanted);
        out.resize(outputs);
        for (std::size_t i = 0; i < outputs; ++i) {
            const bool isText = scorer->Outputs()[i].type == DataType::STRING;
            const bool isCoded = !scorer->Outputs()[i].categories.empty();
            out[i].numbers = isText ? nullptr : results[i].data();
            out[i].codes = isCoded ? codeResults[i].data() : nullptr;
            out[i].texts = isText && !isCoded ? textResults[i].data() : nullptr;
        }
    }

    std::size_t InputNamed(const std::string& name) const {
        std::size_t place = 0;
        while (place < scorer->Inputs().size() && scorer->Inputs()[place].name != name) {
            ++place;
        }
        return place;
    }

    void Score() {
        OutputBlock block;
        block.columns = out.data();
        scorer->Score({kRows, inputs.data()}, *state, block);
    }

    std::shared_ptr<const ColumnScorer> scorer;
    std::unique_ptr<ColumnScorer::State> state;
    std::vector<std::vector<double>> numbers;
    std::vector<std::vector<std::string_view>> texts;
    std::vector<std::vector<std::int32_t>> codes;
    std::vector<std::vector<double>> results;
    std::vector<std::vector<std::int32_t>> codeResults;
    std::vector<std::vector<std::string_view>> textResults;
    std::vector<InputColumn> inputs;
    std::vector<OutputColumn> out;
};

/// Work of one kind on the columns of a block: a document, Score(), and a loop that gives the same, ByHand(). A copy is
/// that of another thread, with a state of its own. Path() is that of its document without the end.
///
/// Rows a second of both on one thread, and `ratio`, the time of the document over that of the loop.
template <typename Work>
void OnOneThread(benchmark::State& state) {
    if (!std::filesystem::exists(Work::Path() + ".pmml")) {
        state.SkipWithError("the real documents are not here");
        return;
    }
    constexpr int kTurn = 50;
    Work work;
    work.Score();
    double own = 0.0;
    double others = 0.0;
    const std::size_t before = Allocations();
    for (auto _ : state) {
        own += SecondsOf(kTurn, [&work](int) { work.Score(); });
        others += SecondsOf(kTurn, [&work](int) { work.ByHand(); });
    }
    const double rows = static_cast<double>(state.iterations()) * kTurn * kRows;
    state.counters["rows/s"] = rows / own;
    state.counters["peer rows/s"] = rows / others;
    state.counters["ratio"] = own / others;
    state.counters["allocations/row"] = static_cast<double>(Allocations() - before) / rows;
}

/// Two threads that share the document, and two that share nothing with the loop: what the second one gains in time on
/// the wall, `speedup` and `peer speedup`. The loop tells what the machine has to give; where it is busy otherwise
/// `undisturbed` tells what is left of two for each thread beside the other one, by the time of the processors.
template <typename Work>
void OnTwoThreads(benchmark::State& state) {
    if (!std::filesystem::exists(Work::Path() + ".pmml")) {
        state.SkipWithError("the real documents are not here");
        return;
    }
    Work first;
    Work second(first);
    Gain own;
    Gain others;
    for (auto _ : state) {
        own.Measure([&first] { first.Score(); }, [&second] { second.Score(); });
        others.Measure([&first] { first.ByHand(); }, [&second] { second.ByHand(); });
    }
    state.counters["rows/s"] = own.Rate() * kRows;
    state.counters["speedup"] = own.Speedup();
    state.counters["peer speedup"] = others.Speedup();
    state.counters["undisturbed"] = own.Undisturbed();
    state.counters["peer undisturbed"] = others.Undisturbed();
}

inline std::vector<std::vector<std::string>> ReadRows(const std::string& path) {
    std::istringstream in(ReadFile(path));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        rows.emplace_back();
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');) {
            rows.back().push_back(cell);
        }
    }
    return rows;
}

/// Fills a block with the rows of a file, again and again.
inline void Fill(Columns& columns, const std::vector<std::vector<std::string>>& rows,
                 std::vector<std::string_view>& dictionary) {
    for (std::size_t column = 0; column < rows[0].size(); ++column) {
        const std::size_t place = columns.InputNamed(rows[0][column]);
        if (place == columns.inputs.size()) {
            continue;
        }
        InputColumn& input = columns.inputs[place];
        const bool isText = columns.scorer->Inputs()[place].type == DataType::STRING;
        for (std::size_t row = 0; row < kRows; ++row) {
            const std::string& cell = rows[1 + row % (rows.size() - 1)][column];
            if (isText) {
                std::size_t code = 0;
                while (code < dictionary.size() && dictionary[code] != cell) {
                    ++code;
                }
                if (code == dictionary.size()) {
                    dictionary.emplace_back(cell);
                }
                columns.codes[place][row] = static_cast<std::int32_t>(code);
            } else {
                columns.numbers[place][row] = cell.empty() ? kMissing : std::strtod(cell.c_str(), nullptr);
            }
        }
        if (isText) {
            input.codes = columns.codes[place].data();
            input.dictionaryMark = 1;
        } else {
            input.numbers = columns.numbers[place].data();
        }
    }
    for (InputColumn& input : columns.inputs) {
        input.dictionary = input.codes == nullptr ? nullptr : dictionary.data();
        input.dictionarySize = input.codes == nullptr ? 0 : dictionary.size();
    }
}

/// The constants of a document in its order.
inline std::vector<double> ReadConstants(const std::string& document) {
    static const std::string kOpen = "<Constant dataType=\"double\">";
    std::vector<double> constants;
    for (std::size_t at = document.find(kOpen); at != std::string::npos; at = document.find(kOpen, at)) {
        at += kOpen.size();
        constants.push_back(std::strtod(document.c_str() + at, nullptr));
    }
    return constants;
}

} // namespace veltrane::bench

#endif
