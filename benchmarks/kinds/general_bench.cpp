// General regressions in columns, beside a hand-written loop over the same columns that gives the same results.
#include "../column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

/// A linear model of three numbers and all of their products.
class GeneralOfOzone {
public:
    static std::string Path() { return VELTRANE_CASES "/models/rattle-glm-ozone"; }

    GeneralOfOzone()
        : fDocument(veltrane::Document::OfFile(Path() + ".pmml")),
          fColumns(std::shared_ptr<const ColumnScorer>(&fDocument.Scorer(), [](const ColumnScorer*) {})) {
        Fill(fColumns, ReadRows(Path() + ".csv"), fDictionary);
    }

    void Score() { fColumns.Score(); }

    void ByHand() {
        const double* const temp = fColumns.inputs[fColumns.InputNamed("temp")].numbers;
        const double* const ibh = fColumns.inputs[fColumns.InputNamed("ibh")].numbers;
        const double* const ibt = fColumns.inputs[fColumns.InputNamed("ibt")].numbers;
        for (std::size_t row = 0; row < kRows; ++row) {
            double sum = 0.134527233143683;
            sum += 0.266502023146842 * temp[row];
            sum += 0.000797305224210236 * ibh[row];
            sum += -0.0801009112817608 * ibt[row];
            sum += -5.33106897699767e-05 * (temp[row] * ibh[row]);
            sum += 0.00103874529298235 * (temp[row] * ibt[row]);
            sum += 1.53132524539178e-06 * (ibh[row] * ibt[row]);
            sum += 1.01217599409579e-07 * (temp[row] * ibh[row] * ibt[row]);
            fSums[row] = std::isfinite(sum) ? sum : kMissing;
        }
        benchmark::DoNotOptimize(fSums.data());
        benchmark::ClobberMemory();
    }

private:
    veltrane::Document fDocument;
    Columns fColumns;
    std::vector<std::string_view> fDictionary;
    std::vector<double> fSums = std::vector<double>(kRows);
};

BENCHMARK(OnOneThread<GeneralOfOzone>);

} // namespace
