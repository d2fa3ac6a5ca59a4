// Models in columns, beside a hand-written loop over the same columns that gives the same results. The loop looks for
// missing values, and for nothing else.
#include "column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

/// A real document over the rows that came with it.
class Model {
public:
    explicit Model(const std::string& path)
        : fDocument(veltrane::Document::OfFile(path + ".pmml")), fPath(path),
          fColumns(std::shared_ptr<const ColumnScorer>(&fDocument.Scorer(), [](const ColumnScorer*) {})) {
        Fill(fColumns, ReadRows(path + ".csv"), fDictionary);
    }
    Model(const Model& other) : fDocument(other.fDocument), fPath(other.fPath), fColumns(other.fColumns.scorer) {
        Fill(fColumns, ReadRows(fPath + ".csv"), fDictionary);
    }

    void Score() { fColumns.Score(); }

    const double* Numbers(const std::string& name) const { return fColumns.inputs[fColumns.InputNamed(name)].numbers; }
    const std::int32_t* Codes(const std::string& name) const {
        return fColumns.inputs[fColumns.InputNamed(name)].codes;
    }
    const std::vector<std::string_view>& Dictionary() const { return fDictionary; }

private:
    std::vector<std::string_view> fDictionary;
    veltrane::Document fDocument;
    std::string fPath;
    Columns fColumns;
};

class TreeOfIris {
public:
    static std::string Path() { return VELTRANE_CASES "/models/rattle-tree-iris"; }

    TreeOfIris() : fModel(Path()) {}
    TreeOfIris(const TreeOfIris& other) : fModel(other.fModel) {}

    void Score() { fModel.Score(); }

    void ByHand() {
        constexpr double kShares[3][3] = {{1, 0, 0}, {0, 49.0 / 54, 5.0 / 54}, {0, 1.0 / 46, 45.0 / 46}};
        static const char* const kNodes[] = {"2", "6", "7"};
        const double* const length = fLength;
        const double* const width = fWidth;
        for (std::size_t row = 0; row < kRows; ++row) {
            const bool isMissing = std::isnan(length[row]) || std::isnan(width[row]);
            const int leaf = isMissing || length[row] < 2.45 ? 0 : width[row] < 1.75 ? 1 : 2;
            fCategories[row] = isMissing ? -1 : leaf;
            fPredicted[row] = fCategories[row];
            fNodes[row] = kNodes[leaf];
            for (std::size_t i = 0; i < 3; ++i) {
                fShares[i][row] = kShares[leaf][i];
            }
        }
        benchmark::DoNotOptimize(fShares.data());
        benchmark::ClobberMemory();
    }

private:
    Model fModel;
    const double* fLength = fModel.Numbers("Petal.Length");
    const double* fWidth = fModel.Numbers("Petal.Width");
    std::vector<std::int32_t> fCategories = std::vector<std::int32_t>(kRows);
    std::vector<std::int32_t> fPredicted = std::vector<std::int32_t>(kRows);
    std::vector<std::string_view> fNodes = std::vector<std::string_view>(kRows);
    std::vector<std::vector<double>> fShares{3, std::vector<double>(kRows)};
};

struct Predictor {
    const double* numbers;
    double coefficient;
};

class RegressionOfOzone {
public:
    static std::string Path() { return VELTRANE_CASES "/models/rattle-regression-ozone"; }

    RegressionOfOzone() : fModel(Path()) {}
    RegressionOfOzone(const RegressionOfOzone& other) : fModel(other.fModel) {}

    void Score() { fModel.Score(); }

    void ByHand() {
        for (std::size_t row = 0; row < kRows; ++row) {
            double sum = -7.72798221395535;
            for (const Predictor& predictor : fPredictors) {
                sum += predictor.coefficient * predictor.numbers[row];
            }
            fSums[row] = sum;
        }
        benchmark::DoNotOptimize(fSums.data());
        benchmark::ClobberMemory();
    }

private:
    Model fModel;
    std::vector<Predictor> fPredictors{{fModel.Numbers("temp"), 0.380440828716888},
                                       {fModel.Numbers("ibh"), -0.00118622776964311},
                                       {fModel.Numbers("ibt"), -0.00582148461403967}};
    std::vector<double> fSums = std::vector<double>(kRows);
};

/// The fields that are scaled ahead of the regression, with their coefficients.
constexpr std::pair<const char*, double> kHousing[] = {
    {"longitude", -54375.70649681826},          {"latitude", -54808.03623499666},
    {"housing_median_age", 13600.088312973096}, {"total_rooms", -13613.10262854997},
    {"total_bedrooms", 42999.85290992916},      {"population", -41119.06758656139},
    {"households", 16307.341177899516},         {"median_income", 74538.73815515594}};

double OfPlace(std::string_view place) {
    constexpr std::pair<std::string_view, double> kPlaces[] = {{"<1H OCEAN", -34269.44338726984},
                                                               {"INLAND", -73509.66116574474},
                                                               {"ISLAND", 179383.9310755516},
                                                               {"NEAR BAY", -40501.86026350658},
                                                               {"NEAR OCEAN", -31102.966259030654}};
    for (const auto& [name, coefficient] : kPlaces) {
        if (name == place) {
            return coefficient;
        }
    }
    return 0.0;
}

class LinearHousing {
public:
    static std::string Path() { return VELTRANE_CASES "/models/sklearn-linear-housing"; }

    LinearHousing() : fModel(Path()) { Prepare(); }
    LinearHousing(const LinearHousing& other) : fModel(other.fModel) { Prepare(); }

    void Score() { fModel.Score(); }

    void ByHand() {
        for (std::size_t row = 0; row < kRows; ++row) {
            double sum = 253544.93255766956;
            for (std::size_t i = 0; i < fPredictors.size(); ++i) {
                const double scaled = (fPredictors[i].numbers[row] - fConstants[2 * i]) / fConstants[2 * i + 1];
                sum += fPredictors[i].coefficient * scaled;
            }
            fSums[row] = sum + fOfPlaces[static_cast<std::size_t>(fPlaces[row])];
        }
        benchmark::DoNotOptimize(fSums.data());
        benchmark::ClobberMemory();
    }

private:
    void Prepare() {
        for (const auto& [field, coefficient] : kHousing) {
            fPredictors.push_back({fModel.Numbers(field), coefficient});
        }
        for (const std::string_view place : fModel.Dictionary()) {
            fOfPlaces.push_back(OfPlace(place));
        }
    }

    Model fModel;
    std::vector<double> fConstants = ReadConstants(ReadFile(Path() + ".pmml"));
    const std::int32_t* fPlaces = fModel.Codes("ocean_proximity");
    std::vector<Predictor> fPredictors;
    std::vector<double> fOfPlaces;
    std::vector<double> fSums = std::vector<double>(kRows);
};

BENCHMARK(OnOneThread<TreeOfIris>);
BENCHMARK(OnTwoThreads<TreeOfIris>);
BENCHMARK(OnOneThread<RegressionOfOzone>);
BENCHMARK(OnTwoThreads<RegressionOfOzone>);
BENCHMARK(OnOneThread<LinearHousing>);
BENCHMARK(OnTwoThreads<LinearHousing>);

} // namespace
