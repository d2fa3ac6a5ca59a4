// Each element and attribute of a model of models, a tree, a set of rules, a scorecard, a baseline, a network, a
// general regression, a naive Bayes model, support vectors, clusters and neighbours missing, empty, wrong and doubled:
// what comes of it stands in every_fault.tsv, with the number of the message and its whole text.
//
// When a message changes, or a document here, write the page anew and look at what is different:
//
//     VELTRANE_FAULTS=tests/models/documents/every_fault.tsv veltrane_models_tests --gtest_filter='EveryFault*'
#include "models/baseline/small_baseline.h"
#include "models/bayes/small_bayes.h"
#include "models/clustering/small_clusters.h"
#include "models/general/small_general.h"
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"
#include "models/neighbours/small_neighbours.h"
#include "models/network/small_network.h"
#include "models/rules/small_rules.h"
#include "models/scorecard/small_card.h"
#include "models/tree/small_tree.h"
#include "models/vectors/small_vectors.h"
#include "support/folders.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>

using namespace veltrane::tests;

namespace {

struct Span {
    std::size_t begin;
    std::size_t end;
};

struct AttributePlace {
    std::string name;
    Span all;   ///< with the blank in front
    Span value; ///< within the quotes
};

struct ElementPlace {
    std::string name;
    Span all;
    Span content; ///< empty for a tag that closes itself
    std::vector<AttributePlace> attributes;
};

/// The elements of a document of elements, attributes and text, from an offset on.
class Places {
public:
    Places(const std::string& document, std::size_t from) : fText(document) {
        for (std::size_t at = fText.find('<', from); at != std::string::npos; at = fText.find('<', at + 1)) {
            if (fText[at + 1] == '/') {
                Close(at);
            } else {
                Open(at);
            }
        }
    }

    const std::vector<ElementPlace>& All() const { return fElements; }

private:
    void Open(std::size_t at) {
        ElementPlace element;
        element.name = NameAt(at + 1);
        std::size_t next = at + 1 + element.name.size();
        while (fText[next] == ' ') {
            AttributePlace attribute;
            attribute.name = NameAt(next + 1);
            const std::size_t value = next + 1 + attribute.name.size() + 2;
            attribute.value = {value, fText.find(fText[value - 1], value)};
            attribute.all = {next, attribute.value.end + 1};
            next = attribute.all.end;
            element.attributes.push_back(attribute);
        }
        const bool isClosed = fText[next] == '/';
        const std::size_t end = fText.find('>', next) + 1;
        element.all = {at, end};
        element.content = {end, end};
        fElements.push_back(element);
        if (!isClosed) {
            fOpen.push_back(fElements.size() - 1);
        }
    }

    void Close(std::size_t at) {
        if (!fOpen.empty()) {
            ElementPlace& element = fElements[fOpen.back()];
            element.content.end = at;
            element.all.end = fText.find('>', at) + 1;
            fOpen.pop_back();
        }
    }

    std::string NameAt(std::size_t at) const { return fText.substr(at, fText.find_first_of(" =/>", at) - at); }

    const std::string& fText;
    std::vector<ElementPlace> fElements;
    std::vector<std::size_t> fOpen;
};

std::string With(std::string text, Span span, const std::string& piece) {
    return text.replace(span.begin, span.end - span.begin, piece);
}

std::string TextOf(const std::string& text, Span span) {
    return text.substr(span.begin, span.end - span.begin);
}

std::string WithName(const std::string& document, const ElementPlace& element, const std::string& name) {
    std::string changed = document;
    if (element.content.begin < element.all.end) {
        changed.replace(element.content.end + 2, element.name.size(), name);
    }
    return changed.replace(element.all.begin + 1, element.name.size(), name);
}

std::string OutcomeOf(const std::string& document) {
    try {
        ReadModel(document);
        return "read";
    } catch (const MCVeltrane_900::VTException& failure) {
        return std::to_string(failure.GetErrorCode()) + " " + failure.GetErrorMessage();
    }
}

struct Subject {
    const char* name;
    const char* start; ///< of the model, where the changes begin
    std::string document;
};

std::string EnsembleOfAll() {
    return EnsembleDocument(
        "<MiningModel functionName='classification' modelName='small' algorithmName='any' isScorable='true'>" +
        Schema("t", Fields("xc")) +
        "<Output><OutputField name='o' feature='entityId' segmentId='one'/></Output>"
        "<Segmentation multipleModelMethod='weightedAverage' missingPredictionTreatment='skipSegment' "
        "missingThreshold='0.5'>"
        "<Segment id='one' weight='2'><SimplePredicate field='x' operator='lessThan' value='5'/>"
        "<TreeModel functionName='classification'>" +
        Schema("t", Fields("x")) +
        "<Node id='1' score='no'><True/></Node></TreeModel><VariableWeight field='x'/></Segment>"
        "<Segment id='two'><True/><TreeModel functionName='classification'>" +
        Schema("t", Fields("c")) +
        "<Node score='yes'><True/></Node></TreeModel></Segment></Segmentation></MiningModel>");
}

std::vector<Subject> Subjects() {
    return {{"ensemble", "<MiningModel", EnsembleOfAll()},
            {"tree", "<TreeModel", kSmallTree},
            {"rules", "<RuleSetModel", kSmallRules},
            {"number rules", "<RuleSetModel", kNumberRules},
            {"card", "<Scorecard", kSmallCard},
            {"sum", "<BaselineModel", kSmallSum},
            {"table", "<BaselineModel", kSmallTable},
            {"network", "<NeuralNetwork", kSmallNetwork},
            {"number network", "<NeuralNetwork", kSmallNumberNetwork},
            {"general", "<GeneralRegressionModel", kSmallGeneral},
            {"ordinal", "<GeneralRegressionModel", kSmallOrdinal},
            {"hazards", "<GeneralRegressionModel", kSmallHazards},
            {"bayes", "<NaiveBayesModel", kSmallBayes},
            {"derived bayes", "<NaiveBayesModel", kSmallDerivedBayes},
            {"vectors", "<SupportVectorMachineModel", kSmallVectors},
            {"number vectors", "<SupportVectorMachineModel", kSmallNumberVectors},
            {"pair of vectors", "<SupportVectorMachineModel", kSmallPair},
            {"coefficients", "<SupportVectorMachineModel", kSmallCoefficients},
            {"clusters", "<ClusteringModel", kSmallClusters},
            {"bits", "<ClusteringModel", kSmallBits},
            {"distributions", "<ClusteringModel", kSmallDistributions},
            {"partitions", "<ClusteringModel", kSmallPartitions},
            {"neighbours", "<NearestNeighborModel", kSmallNeighbours},
            {"near numbers", "<NearestNeighborModel", kSmallNearNumbers}};
}

using Take = std::function<void(const std::string& place, const std::string& change, const std::string& document)>;

void ChangeElement(const std::string& document, const std::string& place, const ElementPlace& element,
                   const Take& take) {
    const std::string text = TextOf(document, element.all);
    take(place, "missing", With(document, element.all, ""));
    take(place, "doubled", With(document, element.all, text + text));
    take(place, "wrong", WithName(document, element, "Wrong"));
    if (element.content.begin < element.content.end) {
        take(place, "empty", With(document, element.content, ""));
    }
    for (const AttributePlace& attribute : element.attributes) {
        const std::string at = place + "/" + attribute.name;
        take(at, "missing", With(document, attribute.all, ""));
        take(at, "doubled",
             With(document, attribute.all, TextOf(document, attribute.all) + TextOf(document, attribute.all)));
        take(at, "wrong", With(document, attribute.value, "?"));
        take(at, "empty", With(document, attribute.value, ""));
    }
}

/// All lines of the page.
std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const Subject& subject : Subjects()) {
        std::map<std::string, int> counts;
        const Places places(subject.document, subject.document.find(subject.start));
        for (const ElementPlace& element : places.All()) {
            const std::string place = element.name + " " + std::to_string(++counts[element.name]);
            ChangeElement(subject.document, place, element,
                          [&](const std::string& at, const std::string& change, const std::string& document) {
                              lines.push_back(std::string(subject.name) + "\t" + at + "\t" + change + "\t" +
                                              OutcomeOf(document));
                          });
        }
    }
    return lines;
}

TEST(EveryFault, EndsInWhatThePageTells) {
    for (const Subject& subject : Subjects()) {
        ASSERT_EQ(OutcomeOf(subject.document), "read") << subject.name;
    }
    const std::vector<std::string> lines = Lines();
    if (const char* path = std::getenv("VELTRANE_FAULTS"); path != nullptr) {
        std::ofstream out(path);
        for (const std::string& line : lines) {
            out << line << '\n';
        }
    }
    std::ifstream in(TestsFolder() + "/models/documents/every_fault.tsv");
    std::vector<std::string> told;
    for (std::string line; std::getline(in, line);) {
        told.push_back(line);
    }
    EXPECT_GT(told.size(), 700U);
    ASSERT_EQ(lines.size(), told.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i], told[i]);
    }
}

} // namespace
