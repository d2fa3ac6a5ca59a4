// Derived fields in columns, beside a hand-written loop over the same columns.
#include "column_blocks.h"
#include "kit/model/transformation_columns.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

/// The derived fields of a real document over the rows that came with it.
class Fields {
public:
    explicit Fields(const std::string& path) : fPath(path), fColumns(Read(path)) { FillColumns(); }
    Fields(const Fields& other) : fPath(other.fPath), fColumns(other.fColumns.scorer) { FillColumns(); }

    void Score() { fColumns.Score(); }

    const double* Numbers(const std::string& name) const { return fColumns.inputs[fColumns.InputNamed(name)].numbers; }
    const std::int32_t* Codes(const std::string& name) const {
        return fColumns.inputs[fColumns.InputNamed(name)].codes;
    }
    /// Of the first field, the second and so on, as the file has them.
    std::vector<const double*> FirstNumbers(std::size_t count) const {
        std::vector<const double*> columns;
        for (std::size_t i = 0; i < count; ++i) {
            columns.push_back(Numbers(fRows[0][i]));
        }
        return columns;
    }

private:
    static std::shared_ptr<const ColumnScorer> Read(const std::string& path) {
        std::istringstream in(ReadFile(path + ".pmml"));
        return std::make_shared<veltrane_kit::TransformationColumns>(veltrane_kit::Transformations::Read(in, "UTF-8"));
    }

    void FillColumns() {
        fRows = ReadRows(fPath + ".csv");
        Fill(fColumns, fRows, fDictionary);
    }

    std::string fPath;
    std::vector<std::vector<std::string>> fRows;
    std::vector<std::string_view> fDictionary;
    Columns fColumns;
};

constexpr int kScaled = 8;     // scaled inputs
constexpr int kIndicators = 5; // indicators of the category
constexpr int kComponents = 5; // principal components
constexpr int kTerms = kScaled + kIndicators;

/// 18 fields with 151 function nodes, some of which look for missing values.
class HousingComponents {
public:
    static std::string Path() { return VELTRANE_CASES "/transform/housing-components"; }

    HousingComponents() : fFields(Path()) {}
    HousingComponents(const HousingComponents& other) : fFields(other.fFields) {}

    void Score() { fFields.Score(); }

    void ByHand() {
        double row[kScaled];
        double values[kTerms + kComponents];
        for (std::size_t i = 0; i < kRows; ++i) {
            for (int j = 0; j < kScaled; ++j) {
                row[j] = fInputs[static_cast<std::size_t>(j)][i];
            }
            for (int j = 0; j < kIndicators; ++j) {
                values[kScaled + j] = fProximity[i] == j ? 1.0 : 0.0;
            }
            Compute(row, fConstants.data(), values);
            for (std::size_t j = 0; j < fResults.size(); ++j) {
                fResults[j][i] = values[j];
            }
        }
        benchmark::ClobberMemory();
    }

private:
    /// The 18 values of a row, with tests for missing values.
    static void Compute(const double* inputs, const double* constants, double* values) {
        for (int i = 0; i < kScaled; ++i) {
            const double mean = *constants++;
            const double deviation = *constants++;
            values[i] = (inputs[i] - mean) / deviation;
        }
        for (int k = 0; k < kComponents; ++k) {
            double sum = 0.0;
            bool found = false;
            for (int j = 0; j < kTerms; ++j) {
                const double mean = *constants++;
                const double weight = *constants++;
                if (!std::isnan(values[j])) {
                    sum += (values[j] - mean) * weight;
                    found = true;
                }
            }
            values[kTerms + k] = found ? sum : kMissing;
        }
    }

    Fields fFields;
    std::vector<double> fConstants = ReadConstants(ReadFile(Path() + ".pmml"));
    std::vector<const double*> fInputs = fFields.FirstNumbers(kScaled);
    const std::int32_t* fProximity = fFields.Codes("ocean_proximity");
    std::vector<std::vector<double>> fResults{kTerms + kComponents, std::vector<double>(kRows)};
};

class IrisScale {
public:
    static std::string Path() { return VELTRANE_CASES "/transform/iris-scale"; }

    IrisScale() : fFields(Path()) {}
    IrisScale(const IrisScale& other) : fFields(other.fFields) {}

    void Score() { fFields.Score(); }

    void ByHand() {
        static constexpr double kFrom[] = {5.84333333333333, 3.05733333333333, 3.758, 1.19933333333333};
        static constexpr double kTo[] = {6.6713994613112, 3.49319961827003, 5.52329823325947, 1.96157100229368};
        for (std::size_t i = 0; i < 4; ++i) {
            const double* const x = fInputs[i];
            double* const y = fResults[i].data();
            const double from = kFrom[i];
            const double width = kTo[i] - from;
            for (std::size_t row = 0; row < kRows; ++row) {
                y[row] = (x[row] - from) / width;
            }
        }
        benchmark::ClobberMemory();
    }

private:
    Fields fFields;
    std::vector<const double*> fInputs{fFields.Numbers("Sepal.Length"), fFields.Numbers("Sepal.Width"),
                                       fFields.Numbers("Petal.Length"), fFields.Numbers("Petal.Width")};
    std::vector<std::vector<double>> fResults{4, std::vector<double>(kRows)};
};

BENCHMARK(OnOneThread<HousingComponents>);
BENCHMARK(OnTwoThreads<HousingComponents>);
BENCHMARK(OnOneThread<IrisScale>);
BENCHMARK(OnTwoThreads<IrisScale>);

} // namespace
