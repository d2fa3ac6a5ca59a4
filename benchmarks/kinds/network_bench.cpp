// Networks and support vectors in columns, beside hand-written loops over the
// same columns that give the same results: some rows at a time, each number of
// a row taken with those of the rows beside it. The loops look for missing
// values, and for nothing else.
#include "../column_blocks.h"

#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace veltrane::bench;
using veltrane::ColumnScorer;

namespace {

constexpr std::size_t kSome = 32; ///< rows that the loops take at once
using Some = std::array<double, kSome>;

/// A document over random numbers, made of its text.
class Made {
public:
    explicit Made(const std::string& text)
        : fDocument(Read(text)),
          fColumns(std::shared_ptr<const ColumnScorer>(&fDocument.Scorer(), [](const ColumnScorer*) {})) {
        std::mt19937_64 random(1);
        std::normal_distribution<double> draw;
        for (std::size_t i = 0; i < fColumns.inputs.size(); ++i) {
            std::generate(fColumns.numbers[i].begin(), fColumns.numbers[i].end(), [&] { return draw(random); });
            fColumns.inputs[i].numbers = fColumns.numbers[i].data();
        }
    }

    void Score() { fColumns.Score(); }
    const double* Numbers(const std::string& name) const { return fColumns.inputs[fColumns.InputNamed(name)].numbers; }
    const double* Results(const std::string& name) const {
        for (std::size_t i = 0; i < fColumns.out.size(); ++i) {
            if (fColumns.scorer->Outputs()[i].name == name) {
                return fColumns.results[i].data();
            }
        }
        return nullptr;
    }

private:
    static veltrane::Document Read(const std::string& text) { return veltrane::Document::OfBytes(text); }

    veltrane::Document fDocument;
    Columns fColumns;
};

/// The numbers of all attributes of a name, in the order of the document.
std::vector<double> NumbersOf(const std::string& document, const std::string& name) {
    const std::string open = " " + name + "=\"";
    std::vector<double> numbers;
    for (std::size_t at = document.find(open); at != std::string::npos; at = document.find(open, at)) {
        at += open.size();
        numbers.push_back(std::strtod(document.c_str() + at, nullptr));
    }
    return numbers;
}

/// A network whose layers are connected whole, by hand: `logistic` or
/// `rectifier`, and shares of exponentials at the end.
class NetworkByHand {
public:
    NetworkByHand(const std::string& document, std::vector<std::size_t> sizes, bool isLogistic)
        : fSizes(std::move(sizes)), fIsLogistic(isLogistic), fBiases(NumbersOf(document, "bias")),
          fWeights(NumbersOf(document, "weight")), fShares(fSizes.back(), std::vector<double>(kRows)) {}

    void Compute(const std::vector<const double*>& inputs) {
        std::vector<Some>& numbers = fNumbers;
        std::vector<Some>& next = fNext;
        for (std::size_t first = 0; first < kRows; first += kSome) {
            numbers.resize(inputs.size());
            Some missing{};
            for (std::size_t i = 0; i < inputs.size(); ++i) {
                std::copy_n(inputs[i] + first, kSome, numbers[i].begin());
                for (std::size_t row = 0; row < kSome; ++row) {
                    missing[row] += std::isnan(numbers[i][row]) ? 1.0 : 0.0;
                }
            }
            const double* weight = fWeights.data();
            const double* bias = fBiases.data();
            for (std::size_t layer = 1; layer < fSizes.size(); ++layer) {
                next.resize(fSizes[layer]);
                for (Some& sums : next) {
                    Sum(numbers, *bias++, weight, sums);
                    weight += numbers.size();
                    if (layer + 1 < fSizes.size()) {
                        Activate(sums);
                    }
                }
                std::swap(numbers, next);
            }
            ShareOut(numbers, first);
            for (std::size_t row = 0; row < kSome; ++row) {
                fCategories[first + row] = missing[row] == 0.0 ? MostProbable(first + row) : -1;
            }
        }
        benchmark::DoNotOptimize(fShares.data());
        benchmark::ClobberMemory();
    }

    double Share(std::size_t category, std::size_t row) const { return fShares[category][row]; }

private:
    static void Sum(const std::vector<Some>& numbers, double bias, const double* weights, Some& sums) {
        Some own;
        own.fill(bias);
        for (const Some& some : numbers) {
            const double weight = *weights++;
            for (std::size_t row = 0; row < kSome; ++row) {
                own[row] += weight * some[row];
            }
        }
        sums = own;
    }

    void Activate(Some& sums) const {
        for (double& sum : sums) {
            sum = fIsLogistic ? 1.0 / (1.0 + std::exp(-sum)) : std::max(sum, 0.0);
        }
    }

    void ShareOut(const std::vector<Some>& sums, std::size_t first) {
        for (std::size_t row = 0; row < kSome; ++row) {
            double largest = sums[0][row];
            for (const Some& some : sums) {
                largest = std::max(largest, some[row]);
            }
            double total = 0.0;
            for (std::size_t i = 0; i < sums.size(); ++i) {
                fShares[i][first + row] = std::exp(sums[i][row] - largest);
                total += fShares[i][first + row];
            }
            for (std::size_t i = 0; i < sums.size(); ++i) {
                fShares[i][first + row] /= total;
            }
        }
    }

    std::int32_t MostProbable(std::size_t row) const {
        std::size_t best = 0;
        for (std::size_t i = 1; i < fShares.size(); ++i) {
            best = fShares[i][row] > fShares[best][row] ? i : best;
        }
        return static_cast<std::int32_t>(best);
    }

    std::vector<std::size_t> fSizes;
    bool fIsLogistic;
    std::vector<double> fBiases;
    std::vector<double> fWeights;
    std::vector<std::vector<double>> fShares;
    std::vector<std::int32_t> fCategories = std::vector<std::int32_t>(kRows);
    std::vector<Some> fNumbers;
    std::vector<Some> fNext;
};

std::string Numbered(const char* name, std::size_t number) {
    std::string text(name);
    text += std::to_string(number);
    return text;
}

std::string NodeAt(std::size_t layer, std::size_t place) {
    return Numbered(Numbered("", layer).append("/").c_str(), place);
}

std::string Fields(std::size_t count, const char* before, const char* behind) {
    std::string fields;
    for (std::size_t i = 0; i < count; ++i) {
        fields += before;
        fields += Numbered("x", i);
        fields += behind;
    }
    return fields;
}

std::string Digits(double number) {
    std::ostringstream text;
    text.precision(17);
    text << number;
    return text.str();
}

/// A document with inputs x0, x1... and the model in its place.
std::string Document(std::size_t fields, const std::string& target, const std::string& tag, const std::string& rest) {
    return "<PMML version=\"4.4\"><DataDictionary>" + target +
           Fields(fields, "<DataField optype=\"continuous\" dataType=\"double\" name=\"", "\"/>") +
           "</DataDictionary><" + tag + "><MiningSchema><MiningField name=\"t\" usageType=\"target\"/>" +
           Fields(fields, "<MiningField name=\"", "\"/>") + "</MiningSchema>" + rest + "</" +
           tag.substr(0, tag.find(' ')) + "></PMML>";
}

/// A classification by a network whose layers are connected whole, with random
/// weights.
std::string NetworkDocument(const std::vector<std::size_t>& sizes, const std::string& activation) {
    std::mt19937_64 random(2);
    std::normal_distribution<double> draw(0.0, 0.3);
    std::string target = "<DataField name=\"t\" optype=\"categorical\" dataType=\"string\">";
    std::string output = "<Output><OutputField name=\"t\" feature=\"predictedValue\"/>";
    std::string outputs = "<NeuralOutputs>";
    for (std::size_t i = 0; i < sizes.back(); ++i) {
        const std::string category = Numbered("c", i);
        target += "<Value value=\"" + category + "\"/>";
        output += "<OutputField name=\"" + Numbered("p", i) + "\" feature=\"probability\" value=\"" + category + "\"/>";
        outputs += "<NeuralOutput outputNeuron=\"" + NodeAt(sizes.size() - 1, i) +
                   "\"><DerivedField optype=\"continuous\" "
                   "dataType=\"double\"><NormDiscrete field=\"t\" value=\"" +
                   category + "\"/></DerivedField></NeuralOutput>";
    }
    std::string layers = "<NeuralInputs>";
    for (std::size_t i = 0; i < sizes[0]; ++i) {
        layers += "<NeuralInput id=\"" + NodeAt(0, i) +
                  "\"><DerivedField optype=\"continuous\" "
                  "dataType=\"double\"><FieldRef field=\"" +
                  Numbered("x", i) + "\"/></DerivedField></NeuralInput>";
    }
    layers += "</NeuralInputs>";
    for (std::size_t layer = 1; layer < sizes.size(); ++layer) {
        const bool isLast = layer + 1 == sizes.size();
        layers += isLast ? "<NeuralLayer activationFunction=\"identity\" "
                           "normalizationMethod=\"softmax\">"
                         : "<NeuralLayer>";
        for (std::size_t i = 0; i < sizes[layer]; ++i) {
            layers += "<Neuron id=\"" + NodeAt(layer, i) + "\" bias=\"" + Digits(draw(random)) + "\">";
            for (std::size_t from = 0; from < sizes[layer - 1]; ++from) {
                layers += "<Con from=\"" + NodeAt(layer - 1, from) + "\" weight=\"" + Digits(draw(random)) + "\"/>";
            }
            layers += "</Neuron>";
        }
        layers += "</NeuralLayer>";
    }
    return Document(sizes[0], target + "</DataField>",
                    "NeuralNetwork functionName=\"classification\" activationFunction=\"" + activation + "\"",
                    output + "</Output>" + layers + outputs + "</NeuralOutputs>");
}

class Network {
public:
    Network(const std::vector<std::size_t>& sizes, const std::string& activation)
        : fText(NetworkDocument(sizes, activation)), fModel(fText), fByHand(fText, sizes, activation == "logistic"),
          fCategories(sizes.back()) {
        for (std::size_t i = 0; i < sizes[0]; ++i) {
            fInputs.push_back(fModel.Numbers(Numbered("x", i)));
        }
    }

    void Score() { fModel.Score(); }
    void ByHand() { fByHand.Compute(fInputs); }

    /// How far the two are apart at most.
    double Difference() const {
        double most = 0.0;
        for (std::size_t i = 0; i < fCategories; ++i) {
            const double* const own = fModel.Results(Numbered("p", i));
            for (std::size_t row = 0; row < kRows; ++row) {
                most = std::max(most, std::abs(own[row] - fByHand.Share(i, row)));
            }
        }
        return most;
    }

private:
    std::string fText;
    Made fModel;
    NetworkByHand fByHand;
    std::size_t fCategories;
    std::vector<const double*> fInputs;
};

/// The shape of the real network of iris.
struct NetworkLikeIris : Network {
    NetworkLikeIris() : Network({4, 5, 3}, "logistic") {}
};

struct NetworkOf100x50x10 : Network {
    NetworkOf100x50x10() : Network({100, 50, 10}, "rectifier") {}
};

/// A regression by vectors of ten fields.
class RadialVectors {
public:
    static constexpr std::size_t kVectors = 700;
    static constexpr std::size_t kFields = 10;
    static constexpr double kGamma = 0.125;

    RadialVectors() : fModel(MakeDocument()) {
        for (std::size_t i = 0; i < kFields; ++i) {
            fInputs.push_back(fModel.Numbers(Numbered("x", i)));
        }
    }

    void Score() { fModel.Score(); }

    void ByHand() {
        for (std::size_t first = 0; first < kRows; first += kSome) {
            Some sums{};
            for (std::size_t i = 0; i < kVectors; ++i) {
                Some squares{};
                for (std::size_t field = 0; field < kFields; ++field) {
                    const double number = fVectors[i * kFields + field];
                    for (std::size_t row = 0; row < kSome; ++row) {
                        const double distance = fInputs[field][first + row] - number;
                        squares[row] += distance * distance;
                    }
                }
                for (std::size_t row = 0; row < kSome; ++row) {
                    sums[row] += fCoefficients[i] * std::exp(-kGamma * squares[row]);
                }
            }
            for (std::size_t row = 0; row < kSome; ++row) {
                fSums[first + row] = sums[row] + 0.5;
            }
        }
        benchmark::DoNotOptimize(fSums.data());
        benchmark::ClobberMemory();
    }

    double Difference() const {
        double most = 0.0;
        const double* const own = fModel.Results("y");
        for (std::size_t row = 0; row < kRows; ++row) {
            most = std::max(most, std::abs(own[row] - fSums[row]));
        }
        return most;
    }

private:
    std::string MakeDocument() {
        std::mt19937_64 random(3);
        std::normal_distribution<double> draw;
        std::string vectors;
        std::string machine;
        std::string coefficients;
        for (std::size_t i = 0; i < kVectors; ++i) {
            const std::string id = std::to_string(i);
            vectors += "<VectorInstance id=\"" + id + "\"><Array type=\"real\">";
            for (std::size_t field = 0; field < kFields; ++field) {
                fVectors.push_back(draw(random));
                vectors += Digits(fVectors.back()) + " ";
            }
            vectors += "</Array></VectorInstance>";
            machine += "<SupportVector vectorId=\"" + id + "\"/>";
            fCoefficients.push_back(draw(random));
            coefficients += "<Coefficient value=\"" + Digits(fCoefficients.back()) + "\"/>";
        }
        return Document(kFields, "<DataField name=\"t\" optype=\"continuous\" dataType=\"double\"/>",
                        "SupportVectorMachineModel functionName=\"regression\"",
                        "<Output><OutputField name=\"y\" "
                        "feature=\"predictedValue\"/></Output><RadialBasisKernelType gamma=\"" +
                            Digits(kGamma) + "\"/><VectorDictionary><VectorFields>" +
                            Fields(kFields, "<FieldRef field=\"", "\"/>") + "</VectorFields>" + vectors +
                            "</VectorDictionary><SupportVectorMachine><SupportVectors>" + machine +
                            "</SupportVectors><Coefficients absoluteValue=\"0.5\">" + coefficients +
                            "</Coefficients></SupportVectorMachine>");
    }

    std::vector<double> fVectors;
    std::vector<double> fCoefficients;
    Made fModel;
    std::vector<const double*> fInputs;
    std::vector<double> fSums = std::vector<double>(kRows);
};

/// Rows a second of both on one thread, and `ratio`, the time of the document
/// over that of the loop.
template <typename Work>
void Beside(benchmark::State& state) {
    constexpr int kTurn = 5;
    Work work;
    work.Score();
    work.ByHand();
    if (!(work.Difference() < 1e-12)) {
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

BENCHMARK(Beside<NetworkLikeIris>);
BENCHMARK(Beside<NetworkOf100x50x10>);
BENCHMARK(Beside<RadialVectors>);

} // namespace
