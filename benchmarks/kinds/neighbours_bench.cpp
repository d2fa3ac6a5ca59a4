// The nearest of many training instances for cases in columns, beside a hand-written scan of all instances that gives
// the same results: some instances at once, field by field. The scan looks for missing values, and for nothing else.
#include "../column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

constexpr std::size_t kSome = 32; ///< instances that the scan takes at once
constexpr std::size_t kFields = 10;

std::string Digits(double number) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof(text), number).ptr};
}

/// Instances, by fields, padded to whole groups with such that are far away.
struct Points {
    std::vector<std::vector<double>> columns;
    std::vector<double> targets;
};

/// @param spread how far instances are from their center; instances without centers fill the room evenly
Points DrawPoints(std::size_t count, double spread, std::mt19937_64& random) {
    std::uniform_real_distribution<double> draw(0.0, 8.0);
    std::normal_distribution<double> around(0.0, spread);
    std::vector<double> centers(20 * kFields);
    std::generate(centers.begin(), centers.end(), [&] { return draw(random); });
    Points points{std::vector<std::vector<double>>(kFields), {}};
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t center = random() % 20;
        for (std::size_t field = 0; field < kFields; ++field) {
            points.columns[field].push_back(spread > 0.0 ? centers[center * kFields + field] + around(random)
                                                         : draw(random));
        }
        points.targets.push_back(static_cast<double>(i));
    }
    return points;
}

std::string DocumentOf(const Points& points) {
    std::string dictionary;
    std::string schema;
    std::string fields;
    std::string inputs;
    for (std::size_t field = 0; field < kFields; ++field) {
        std::string name("'f");
        name.append(std::to_string(field)).append("'");
        dictionary += "<DataField name=" + name + " optype='continuous' dataType='double'/>";
        schema += "<MiningField name=" + name + "/>";
        fields += "<InstanceField field=" + name + "/>";
        inputs += "<KNNInput field=" + name + "/>";
    }
    std::string rows;
    for (std::size_t i = 0; i < points.targets.size(); ++i) {
        rows += "<row><y>" + Digits(points.targets[i]) + "</y>";
        for (std::size_t field = 0; field < kFields; ++field) {
            const std::string tag = std::to_string(field);
            rows.append("<f").append(tag).append(">").append(Digits(points.columns[field][i]));
            rows.append("</f").append(tag).append(">");
        }
        rows += "</row>";
    }
    return "<PMML version='4.4'><DataDictionary>" + dictionary +
           "<DataField name='y' optype='continuous' dataType='double'/></DataDictionary><NearestNeighborModel "
           "functionName='regression' numberOfNeighbors='1'><MiningSchema>" +
           schema +
           "<MiningField name='y' usageType='target'/></MiningSchema><Output><OutputField name='n' "
           "feature='predictedValue'/></Output><TrainingInstances><InstanceFields>" +
           fields + "<InstanceField field='y'/></InstanceFields><InlineTable>" + rows +
           "</InlineTable></TrainingInstances><ComparisonMeasure kind='distance'><euclidean/></ComparisonMeasure>"
           "<KNNInputs>" +
           inputs + "</KNNInputs></NearestNeighborModel></PMML>";
}

/// One model over cases that are drawn as its instances are.
class Neighbours {
public:
    Neighbours(std::size_t count, double spread, std::mt19937_64& random)
        : fPoints(DrawPoints(count + kRows, spread, random)) {
        fCases = fPoints;
        for (std::size_t field = 0; field < kFields; ++field) {
            fPoints.columns[field].resize(count);
            fCases.columns[field].erase(fCases.columns[field].begin(),
                                        fCases.columns[field].begin() + static_cast<std::ptrdiff_t>(count));
        }
        fPoints.targets.resize(count);
        fDocument = std::make_unique<veltrane::Document>(veltrane::Document::OfBytes(DocumentOf(fPoints)));
        for (auto& column : fPoints.columns) {
            column.resize((count + kSome - 1) / kSome * kSome, HUGE_VAL);
        }
        fColumns = std::make_unique<Columns>(
            std::shared_ptr<const ColumnScorer>(&fDocument->Scorer(), [](const ColumnScorer*) {}));
        for (std::size_t field = 0; field < kFields; ++field) {
            fColumns->numbers[field] = fCases.columns[field];
            fColumns->inputs[field].numbers = fColumns->numbers[field].data();
        }
    }

    void Score() { fColumns->Score(); }

    void ByHand() {
        for (std::size_t row = 0; row < kRows; ++row) {
            fNearest[row] = NearestOf(row);
        }
        benchmark::DoNotOptimize(fNearest.data());
        benchmark::ClobberMemory();
    }

    /// Rows of which the two tell anything else.
    std::size_t Differences() const {
        std::size_t count = 0;
        for (std::size_t row = 0; row < kRows; ++row) {
            count += fColumns->results[0][row] == fNearest[row] ? 0 : 1;
        }
        return count;
    }

private:
    double NearestOf(std::size_t row) const {
        double best = HUGE_VAL;
        std::size_t nearest = 0;
        for (std::size_t first = 0; first < fPoints.columns[0].size(); first += kSome) {
            std::array<double, kSome> sums{};
            for (std::size_t field = 0; field < kFields; ++field) {
                const double x = fCases.columns[field][row];
                const double* const numbers = fPoints.columns[field].data() + first;
                for (std::size_t i = 0; i < kSome; ++i) {
                    const double difference = numbers[i] - x;
                    sums[i] += difference * difference;
                }
            }
            for (std::size_t i = 0; i < kSome; ++i) {
                nearest = sums[i] < best ? first + i : nearest;
                best = sums[i] < best ? sums[i] : best;
            }
        }
        return std::isnan(best) ? best : fPoints.targets[nearest];
    }

    Points fPoints;
    Points fCases;
    std::unique_ptr<veltrane::Document> fDocument;
    std::unique_ptr<Columns> fColumns;
    std::vector<double> fNearest = std::vector<double>(kRows);
};

/// Microseconds a case of both on one thread, and `ratio`, the time of the document over that of the scan.
void Nearest(benchmark::State& state) {
    std::mt19937_64 random(1);
    Neighbours work(static_cast<std::size_t>(state.range(0)), state.range(1) == 0 ? 0.0 : 0.5, random);
    work.Score();
    work.ByHand();
    if (work.Differences() != 0) {
        state.SkipWithError("the scan gives other results");
        return;
    }
    double own = 0.0;
    double others = 0.0;
    for (auto _ : state) {
        own += SecondsOf(1, [&work](int) { work.Score(); });
        others += SecondsOf(1, [&work](int) { work.ByHand(); });
    }
    const double rows = static_cast<double>(state.iterations()) * kRows;
    state.counters["us/case"] = 1e6 * own / rows;
    state.counters["peer us/case"] = 1e6 * others / rows;
    state.counters["ratio"] = own / others;
}

BENCHMARK(Nearest)
    ->ArgNames({"instances", "clumped"})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Args({100000, 0})
    ->Args({100000, 1});

} // namespace
