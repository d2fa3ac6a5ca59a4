// Clusters in columns, beside a hand-written loop over the same columns that gives the same results: cluster by
// cluster, each for some rows at once. The loop looks for missing values, and for nothing else.
#include "../column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

constexpr std::size_t kSome = 32; ///< rows that the loop takes at once
constexpr std::size_t kFields = 4;
constexpr std::size_t kClusters = 3;
using Some = std::array<double, kSome>;

/// Those of the real model of iris.
constexpr double kCenters[kClusters][kFields] = {
    {5.90161290322581, 2.74838709677419, 4.39354838709678, 1.43387096774194},
    {6.85, 3.07368421052632, 5.74210526315789, 2.07105263157895},
    {5.006, 3.428, 1.462, 0.246}};

const std::string kDocument = R"(<PMML version="4.4"><DataDictionary>
<DataField name="a" optype="continuous" dataType="double"/><DataField name="b" optype="continuous" dataType="double"/>
<DataField name="c" optype="continuous" dataType="double"/><DataField name="d" optype="continuous" dataType="double"/></DataDictionary>
<ClusteringModel functionName="clustering" modelClass="centerBased" numberOfClusters="3">
<MiningSchema><MiningField name="a"/><MiningField name="b"/><MiningField name="c"/><MiningField name="d"/></MiningSchema>
<Output><OutputField name="cluster" feature="predictedValue"/>
<OutputField name="1" feature="clusterAffinity" value="1"/><OutputField name="2" feature="clusterAffinity" value="2"/>
<OutputField name="3" feature="clusterAffinity" value="3"/></Output>
<ComparisonMeasure kind="distance"><squaredEuclidean/></ComparisonMeasure>
<ClusteringField field="a"/><ClusteringField field="b"/><ClusteringField field="c"/><ClusteringField field="d"/>
<Cluster id="1"><Array type="real">5.90161290322581 2.74838709677419 4.39354838709678 1.43387096774194</Array></Cluster>
<Cluster id="2"><Array type="real">6.85 3.07368421052632 5.74210526315789 2.07105263157895</Array></Cluster>
<Cluster id="3"><Array type="real">5.006 3.428 1.462 0.246</Array></Cluster></ClusteringModel></PMML>)";

/// The clusters of iris over random numbers.
class Clusters {
public:
    Clusters()
        : fDocument(veltrane::Document::OfBytes(kDocument)),
          fColumns(std::shared_ptr<const ColumnScorer>(&fDocument.Scorer(), [](const ColumnScorer*) {})) {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> draw(0.0, 8.0);
        for (std::size_t i = 0; i < kFields; ++i) {
            std::generate(fColumns.numbers[i].begin(), fColumns.numbers[i].end(), [&] { return draw(random); });
            fColumns.inputs[i].numbers = fColumns.numbers[i].data();
        }
    }

    void Score() { fColumns.Score(); }

    void ByHand() {
        for (std::size_t first = 0; first < kRows; first += kSome) {
            Some best;
            best.fill(HUGE_VAL);
            Some nearest{};
            Some missing{};
            for (std::size_t cluster = 0; cluster < kClusters; ++cluster) {
                Some sums{};
                for (std::size_t i = 0; i < kFields; ++i) {
                    const double* const numbers = fColumns.numbers[i].data() + first;
                    for (std::size_t row = 0; row < kSome; ++row) {
                        const double difference = numbers[row] - kCenters[cluster][i];
                        missing[row] += std::isnan(numbers[row]) ? 1.0 : 0.0;
                        sums[row] += difference * difference;
                    }
                }
                for (std::size_t row = 0; row < kSome; ++row) {
                    const bool isNearer = sums[row] < best[row];
                    nearest[row] = isNearer ? static_cast<double>(cluster) : nearest[row];
                    best[row] = isNearer ? sums[row] : best[row];
                    fDistances[cluster][first + row] = sums[row];
                }
            }
            for (std::size_t row = 0; row < kSome; ++row) {
                fNearest[first + row] = missing[row] == 0.0 ? static_cast<std::int32_t>(nearest[row]) : -1;
            }
        }
        benchmark::DoNotOptimize(fNearest.data());
        benchmark::ClobberMemory();
    }

    /// Rows of which the two tell anything else. The prediction has a column of its own ahead of the output fields.
    std::size_t Differences() const {
        std::size_t count = 0;
        for (std::size_t row = 0; row < kRows; ++row) {
            bool isSame = fColumns.codeResults[0][row] == fNearest[row];
            for (std::size_t cluster = 0; cluster < kClusters; ++cluster) {
                isSame = isSame && fColumns.results[cluster + 2][row] == fDistances[cluster][row];
            }
            count += isSame ? 0 : 1;
        }
        return count;
    }

private:
    veltrane::Document fDocument;
    Columns fColumns;
    std::vector<std::int32_t> fNearest = std::vector<std::int32_t>(kRows);
    std::vector<std::vector<double>> fDistances =
        std::vector<std::vector<double>>(kClusters, std::vector<double>(kRows));
};

/// Rows a second of both on one thread, and `ratio`, the time of the document over that of the loop.
void ClustersOfIris(benchmark::State& state) {
    constexpr int kTurn = 50;
    Clusters work;
    work.Score();
    work.ByHand();
    if (work.Differences() != 0) {
        state.SkipWithError("the loop gives other results");
        return;
    }
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

BENCHMARK(ClustersOfIris);

} // namespace
