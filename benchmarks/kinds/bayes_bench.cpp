// Naive Bayes models in columns, beside a hand-written loop over the same columns that gives the same probabilities.
#include "../column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

constexpr std::size_t kInputs = 10;
constexpr std::size_t kKinds = 3;
constexpr double kThreshold = 0.001;

double Mean(std::size_t input, std::size_t kind) {
    return static_cast<double>(input) + 1.5 * static_cast<double>(kind);
}

double Variance(std::size_t input, std::size_t kind) {
    return 1.0 + 0.25 * static_cast<double>((input + kind) % 4);
}

/// Ten inputs with a normal distribution for each of three categories.
std::string DocumentText() {
    std::ostringstream fields;
    std::ostringstream schema;
    std::ostringstream inputs;
    for (std::size_t i = 0; i < kInputs; ++i) {
        fields << "<DataField name='x" << i << "' optype='continuous' dataType='double'/>";
        schema << "<MiningField name='x" << i << "'/>";
        inputs << "<BayesInput fieldName='x" << i << "'><TargetValueStats>";
        for (std::size_t kind = 0; kind < kKinds; ++kind) {
            inputs << "<TargetValueStat value='" << kind << "'><GaussianDistribution mean='" << Mean(i, kind)
                   << "' variance='" << Variance(i, kind) << "'/></TargetValueStat>";
        }
        inputs << "</TargetValueStats></BayesInput>";
    }
    return "<PMML version='4.4'><Header/><DataDictionary><DataField name='y' optype='categorical' dataType='string'>"
           "<Value value='0'/><Value value='1'/><Value value='2'/></DataField>" +
           fields.str() +
           "</DataDictionary><NaiveBayesModel functionName='classification' threshold='0.001'><MiningSchema>"
           "<MiningField name='y' usageType='target'/>" +
           schema.str() +
           "</MiningSchema><Output><OutputField name='p0' feature='probability' value='0'/><OutputField name='p1' "
           "feature='probability' value='1'/><OutputField name='p2' feature='probability' value='2'/></Output>"
           "<BayesInputs>" +
           inputs.str() +
           "</BayesInputs><BayesOutput fieldName='y'><TargetValueCounts><TargetValueCount value='0' count='50'/>"
           "<TargetValueCount value='1' count='30'/><TargetValueCount value='2' count='20'/></TargetValueCounts>"
           "</BayesOutput></NaiveBayesModel></PMML>";
}

class TenInputs {
public:
    TenInputs()
        : fDocument(veltrane::Document::OfBytes(DocumentText())),
          fColumns(std::shared_ptr<const ColumnScorer>(&fDocument.Scorer(), [](const ColumnScorer*) {})) {
        std::mt19937_64 random(1);
        std::normal_distribution<double> noise(0.0, 1.0);
        for (std::size_t i = 0; i < kInputs; ++i) {
            std::vector<double>& numbers = fColumns.numbers[i];
            for (std::size_t row = 0; row < kRows; ++row) {
                numbers[row] = Mean(i, row % kKinds) + noise(random);
            }
            fColumns.inputs[i].numbers = numbers.data();
        }
    }

    void Score() { fColumns.Score(); }

    /// The logarithms of the densities, added up and shared out.
    void ByHand() {
        const double bound = std::log(kThreshold);
        for (std::size_t row = 0; row < kRows; ++row) {
            double logs[kKinds] = {fPriors[0], fPriors[1], fPriors[2]};
            for (std::size_t i = 0; i < kInputs; ++i) {
                const double number = fColumns.inputs[i].numbers[row];
                if (std::isnan(number)) {
                    continue;
                }
                for (std::size_t kind = 0; kind < kKinds; ++kind) {
                    const double difference = number - Mean(i, kind);
                    const double log = fConstants[i][kind] - difference * difference * fFactors[i][kind];
                    logs[kind] += log < bound ? bound : log;
                }
            }
            Share(logs, row);
        }
        benchmark::DoNotOptimize(fShares.data());
        benchmark::DoNotOptimize(fCategories.data());
        benchmark::ClobberMemory();
    }

    /// Whether both say the same.
    bool Agree() {
        Score();
        ByHand();
        for (std::size_t row = 0; row < kRows; ++row) {
            for (std::size_t kind = 0; kind < kKinds; ++kind) {
                if (std::abs(fColumns.results[1 + kind][row] - fShares[kind][row]) > 1e-12) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    void Share(const double (&logs)[kKinds], std::size_t row) {
        const std::size_t best = logs[1] > logs[0] ? (logs[2] > logs[1] ? 2 : 1) : (logs[2] > logs[0] ? 2 : 0);
        double total = 0.0;
        for (std::size_t kind = 0; kind < kKinds; ++kind) {
            fShares[kind][row] = std::exp(logs[kind] - logs[best]);
            total += fShares[kind][row];
        }
        for (std::size_t kind = 0; kind < kKinds; ++kind) {
            fShares[kind][row] /= total;
        }
        fCategories[row] = static_cast<std::int32_t>(best);
    }

    veltrane::Document fDocument;
    Columns fColumns;
    double fPriors[kKinds] = {std::log(50.0), std::log(30.0), std::log(20.0)};
    std::vector<std::vector<double>> fConstants =
        Each([](double variance) { return -0.5 * std::log(2.0 * std::numbers::pi * variance); });
    std::vector<std::vector<double>> fFactors = Each([](double variance) { return 0.5 / variance; });
    std::vector<std::vector<double>> fShares{kKinds, std::vector<double>(kRows)};
    std::vector<std::int32_t> fCategories = std::vector<std::int32_t>(kRows);

    template <typename Of>
    static std::vector<std::vector<double>> Each(Of of) {
        std::vector<std::vector<double>> numbers(kInputs, std::vector<double>(kKinds));
        for (std::size_t i = 0; i < kInputs; ++i) {
            for (std::size_t kind = 0; kind < kKinds; ++kind) {
                numbers[i][kind] = of(Variance(i, kind));
            }
        }
        return numbers;
    }
};

/// Rows a second of both on one thread, and `ratio`, the time of the document over that of the loop.
void BayesOfTenInputs(benchmark::State& state) {
    constexpr int kTurn = 50;
    TenInputs work;
    if (!work.Agree()) {
        state.SkipWithError("the loop gives something else");
        return;
    }
    double own = 0.0;
    double others = 0.0;
    for (auto _ : state) {
        own += SecondsOf(kTurn, [&work](int) { work.Score(); });
        others += SecondsOf(kTurn, [&work](int) { work.ByHand(); });
    }
    const double rows = static_cast<double>(state.iterations()) * kTurn * kRows;
    state.counters["rows/s"] = rows / own;
    state.counters["peer rows/s"] = rows / others;
    state.counters["ratio"] = own / others;
}

BENCHMARK(BayesOfTenInputs);

} // namespace
