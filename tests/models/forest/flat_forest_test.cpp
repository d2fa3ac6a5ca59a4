// The segments of an ensemble of trees as one forest give what they give one by one, bit for bit: random forests of
// all methods and treatments over rows with whatever a host may bring, case by case and in blocks.
#include "kit/model/model_columns.h"
#include "mining/mining_scorer.h"
#include "models/forest/random_forest.h"
#include "models/plans/plan_reading.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace veltrane_kit;
using namespace veltrane::tests;
using MCVeltrane_900::CaseRecord;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::StringValue;
using veltrane_forest::Forest;
using veltrane_mining::MiningScorer;
using Road = MiningScorer::Road;
using Walk = Forest::Walk;

std::unique_ptr<const Scorer> MakeSegments(const Element& element, ModelParts& parts) {
    return std::make_unique<const MiningScorer>(element, parts, Road::SEGMENTS);
}

template <Walk kWalk>
std::unique_ptr<const Scorer> MakeForest(const Element& element, ModelParts& parts) {
    return std::make_unique<const MiningScorer>(element, parts, Road::FOREST, kWalk);
}

/// Every way through a forest.
struct NamedWalk {
    const char* name;
    Walk walk;
    MakeScorer make;
};
constexpr NamedWalk kWalks[] = {{"fastest", Walk::FASTEST, MakeForest<Walk::FASTEST>},
                                {"one by one", Walk::ONE_BY_ONE, MakeForest<Walk::ONE_BY_ONE>},
                                {"abreast", Walk::ABREAST, MakeForest<Walk::ABREAST>},
                                {"AVX2", Walk::AVX2, MakeForest<Walk::AVX2>},
                                {"AVX-512", Walk::AVX512, MakeForest<Walk::AVX512>}};

std::shared_ptr<const ModelPlan> ReadPlan(const std::string& document, MakeScorer make) {
    return PlanReader(document).Read(u"MiningModel", make);
}

/// A value of each field: a number, a text or nothing.
struct Cell {
    std::optional<double> number;
    std::optional<std::string> text;
};
using Row = std::vector<Cell>;
const std::vector<std::string> kFields{"x", "z", "f", "k", "c", "o", "w"};

class RandomRows {
public:
    RandomRows(const std::vector<std::string>& fields, unsigned seed, std::size_t mostMissing)
        : fFields(fields), fRandom(seed), fMostMissing(mostMissing) {}

    Row Next() {
        const bool isWhole = fRandom() % 4 != 0;
        Row row;
        for (const std::string& field : fFields) {
            row.push_back(isWhole || fRandom() % fMostMissing != 0 ? CellOf(field) : Cell());
        }
        return row;
    }

private:
    Cell CellOf(const std::string& field) {
        Cell cell;
        if (field == "c" || field == "o" || field == "w") {
            const std::vector<std::string> texts = RandomForest::Texts(field.front());
            cell.text = fRandom() % 40 == 0 ? "unheard of" : texts[fRandom() % texts.size()];
            return cell;
        }
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        const double number = RandomForest::Numbers()[fRandom() % RandomForest::Numbers().size()];
        const double odd[] = {kInfinity,
                              -kInfinity,
                              9007199254740993.0,
                              -std::numeric_limits<double>::denorm_min(),
                              std::numeric_limits<double>::max(),
                              std::nan("")};
        switch (fRandom() % 8) {
        case 0:
            cell.number = std::nextafter(number, kInfinity);
            break;
        case 1:
            cell.number = std::nextafter(number, -kInfinity);
            break;
        case 2:
            cell.number = static_cast<double>(static_cast<float>(number));
            break;
        case 3:
            cell.number = fRandom() % 4 == 0 ? odd[fRandom() % 6] : number;
            break;
        default:
            cell.number = field == "k" ? static_cast<double>(static_cast<int>(fRandom() % 9) - 2) : number;
        }
        return cell;
    }

    std::vector<std::string> fFields;
    std::mt19937 fRandom;
    std::size_t fMostMissing;
};

/// Those of every forest, and some more.
std::vector<std::string> FieldsOf(int more) {
    std::vector<std::string> fields = kFields;
    for (int field = 0; field < more; ++field) {
        fields.push_back("n" + std::to_string(field));
    }
    return fields;
}

std::unique_ptr<CaseRecord> RecordOf(const Row& row) {
    const std::vector<std::string> fields = FieldsOf(static_cast<int>(row.size() - kFields.size()));
    auto record = std::make_unique<CaseRecord>(static_cast<int>(row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i].number) {
            record->Add(fields[i], new NumericValue(*row[i].number));
        } else {
            record->Add(fields[i], row[i].text ? new StringValue(*row[i].text) : nullptr);
        }
    }
    return record;
}

std::string BitsOf(double number) {
    return std::to_string(Bits(number));
}

std::string AnswerOf(const ModelPlan& plan, const Row& row, ModelState& state) {
    const std::unique_ptr<CaseRecord> record = RecordOf(row);
    if (!plan.Predict(*record, state)) {
        return "none for slot " + std::to_string(state.prediction.lacking);
    }
    std::string answer = BitsOf(state.prediction.number) + " " + std::to_string(state.prediction.category);
    for (const double probability : state.prediction.probabilities) {
        answer += " " + BitsOf(probability);
    }
    return answer;
}

std::vector<std::string> CaseByCase(const ModelPlan& plan, const std::vector<Row>& rows) {
    std::vector<std::string> answers;
    answers.reserve(rows.size());
    ModelState state(plan);
    for (const Row& row : rows) {
        answers.push_back(AnswerOf(plan, row, state));
    }
    return answers;
}

/// What the columns of a plan hold for rows, from those of the first field on.
std::vector<std::string> InColumns(const std::shared_ptr<const ModelPlan>& plan, const std::vector<Row>& rows) {
    const ModelColumns columns(plan, false);
    const auto state = columns.NewState();
    const std::vector<std::string> fields = FieldsOf(static_cast<int>(rows.front().size() - kFields.size()));
    std::vector<std::vector<double>> numbers;
    std::vector<std::vector<std::string_view>> texts;
    std::vector<veltrane::InputColumn> inputs(columns.Inputs().size());
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        numbers.emplace_back(rows.size(), std::nan(""));
        texts.emplace_back(rows.size());
    }
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const auto field = static_cast<std::size_t>(std::find(fields.begin(), fields.end(), columns.Inputs()[i].name) -
                                                    fields.begin());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const Cell& cell = rows[row][field];
            numbers[i][row] = cell.number.value_or(std::nan(""));
            texts[i][row] = cell.text ? std::string_view(*cell.text) : std::string_view();
        }
        const bool isText = columns.Inputs()[i].type == veltrane::DataType::STRING;
        inputs[i].numbers = isText ? nullptr : numbers[i].data();
        inputs[i].texts = isText ? texts[i].data() : nullptr;
    }
    std::vector<double> results(rows.size());
    std::vector<std::int32_t> codes(rows.size());
    std::vector<std::uint8_t> unscored(rows.size());
    std::vector<veltrane::OutputColumn> out(columns.Outputs().size());
    out[0].numbers = plan->IsClassification() ? nullptr : results.data();
    out[0].codes = plan->IsClassification() ? codes.data() : nullptr;
    veltrane::OutputBlock block;
    block.columns = out.data();
    block.unscored = unscored.data();
    columns.Score({rows.size(), inputs.data()}, *state, block);
    std::vector<std::string> answers;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        answers.push_back(unscored[row] != 0 ? "none" : BitsOf(results[row]) + " " + std::to_string(codes[row]));
    }
    return answers;
}

constexpr std::size_t kRows = 330;

std::vector<Row> RowsOf(unsigned seed, std::size_t mostMissing, int moreFields = 0) {
    RandomRows random(FieldsOf(moreFields), seed, mostMissing);
    std::vector<Row> rows;
    for (std::size_t row = 0; row < kRows; ++row) {
        rows.push_back(random.Next());
    }
    return rows;
}

/// Fails the test unless the forest of a document gives what its segments give, whichever way it is gone through.
/// @param lengths of the batches of columns
/// @return how many rows have a prediction
std::size_t CheckDocument(const std::string& document, unsigned seed, const std::vector<std::size_t>& lengths,
                          int moreFields = 0) {
    const auto segments = ReadPlan(document, MakeSegments);
    EXPECT_EQ(static_cast<const MiningScorer&>(segments->GetScorer()).Flat(), nullptr);
    std::vector<std::shared_ptr<const ModelPlan>> forests;
    for (const NamedWalk& walk : kWalks) {
        forests.push_back(Forest::Has(walk.walk) ? ReadPlan(document, walk.make) : nullptr);
    }
    std::size_t count = 0;
    // Few missing values: most rows of a block go the forest's way; many: none does.
    for (const std::size_t mostMissing : {40U + 8U * static_cast<unsigned>(moreFields), 3U}) {
        const std::vector<Row> rows = RowsOf(seed, mostMissing, moreFields);
        const std::vector<std::string> expected = CaseByCase(*segments, rows);
        const std::vector<std::string> columns = InColumns(segments, rows);
        for (std::size_t i = 0; i < forests.size(); ++i) {
            if (forests[i] == nullptr) {
                continue;
            }
            SCOPED_TRACE(kWalks[i].name);
            EXPECT_NE(static_cast<const MiningScorer&>(forests[i]->GetScorer()).Flat(), nullptr) << document;
            // Cases go the fastest way by the best vectors that there are, or none.
            if (kWalks[i].walk < Walk::AVX2) {
                EXPECT_EQ(CaseByCase(*forests[i], rows), expected);
            }
            for (const std::size_t length : lengths) {
                const auto some = static_cast<std::ptrdiff_t>(length);
                EXPECT_EQ(InColumns(forests[i], {rows.begin(), rows.begin() + some}),
                          std::vector<std::string>(columns.begin(), columns.begin() + some));
            }
        }
        count += static_cast<std::size_t>(
            std::count_if(columns.begin(), columns.end(), [](const std::string& answer) { return answer != "none"; }));
    }
    return count;
}

/// The same for a random forest.
std::size_t Check(const ForestOptions& options, unsigned seed, const std::vector<std::size_t>& lengths = {kRows}) {
    return CheckDocument(RandomForest(options, seed).Document(), seed, lengths, options.moreFields);
}

constexpr const char* kStrategies[] = {"none",         "lastPrediction",     "nullPrediction",
                                       "defaultChild", "weightedConfidence", "aggregateNodes"};
constexpr const char* kNoTrueChild[] = {"returnNullPrediction", "returnLastPrediction"};

struct FlatForest : testing::TestWithParam<const char*> {};

/// All treatments of missing values for a method.
std::size_t CheckTreatments(ForestOptions options) {
    unsigned seed = 1;
    std::size_t count = 0;
    for (const char* strategy : kStrategies) {
        for (const char* noTrueChild : kNoTrueChild) {
            for (const bool isWide : {false, true}) {
                options.strategy = strategy;
                options.noTrueChild = noTrueChild;
                options.isWide = isWide;
                options.hasSets = isWide || seed % 3 != 0;
                options.missingPrediction = seed % 3 == 0   ? "continue"
                                            : seed % 3 == 1 ? "skipSegment"
                                                            : "returnMissing";
                SCOPED_TRACE(options.method + " " + strategy + " " + noTrueChild + (isWide ? " wide" : ""));
                count += Check(options, ++seed);
            }
        }
    }
    return count;
}

TEST_P(FlatForest, GivesTheNumbersOfItsSegments) {
    ForestOptions options;
    options.method = GetParam();
    EXPECT_GT(CheckTreatments(options), kRows);
}

INSTANTIATE_TEST_SUITE_P(Methods, FlatForest,
                         testing::Values("average", "weightedAverage", "median", "weightedMedian", "max", "sum",
                                         "weightedSum"));

struct FlatForestOfCategories : testing::TestWithParam<const char*> {};

TEST_P(FlatForestOfCategories, GivesTheSharesOfItsSegments) {
    ForestOptions options;
    options.method = GetParam();
    options.isClassification = true;
    // By their probabilities, or as sure of their category as a vote is.
    options.hasShares = options.method.size() % 2 == 1;
    EXPECT_GT(CheckTreatments(options), kRows);
}

INSTANTIATE_TEST_SUITE_P(Methods, FlatForestOfCategories,
                         testing::Values("majorityVote", "weightedMajorityVote", "average", "weightedAverage", "median",
                                         "weightedMedian", "max", "sum", "weightedSum"));

TEST(FlatForestOfEveryShape, GivesTheNumbersOfItsSegments) {
    struct Shape {
        int trees;
        int depth;
        std::size_t leaves;
    };
    // Leaves alone, stumps, trees of all sizes up to more steps than a byte counts, and narrow ones.
    const Shape shapes[] = {{3, 0, 6}, {20, 1, 6}, {70, 2, 9}, {40, 3, 20}, {12, 7, 20}, {3, 9, 20}, {9, 20, 2}};
    const std::vector<std::size_t> lengths{1, 7, 15, 16, 17, 33, 63, 64, 65, 127, 130, 200, 255, 256, 257, 273, kRows};
    unsigned seed = 100;
    std::size_t count = 0;
    for (const Shape& shape : shapes) {
        for (const bool isWide : {false, true}) {
            ForestOptions options;
            options.trees = shape.trees;
            options.depth = shape.depth;
            options.leaves = shape.leaves;
            options.isWide = isWide;
            options.strategy = kStrategies[seed % 6];
            options.noTrueChild = kNoTrueChild[seed % 2];
            options.isClassification = seed % 3 == 0;
            options.method = options.isClassification ? "majorityVote" : "sum";
            SCOPED_TRACE("depth " + std::to_string(shape.depth) + " seed " + std::to_string(seed));
            count += Check(options, seed++, lengths);
        }
    }
    EXPECT_GT(count, kRows);
}

TEST(FlatForestOfFullTrees, GivesTheNumbersOfItsSegments) {
    std::size_t count = 0;
    for (const int depth : {4, 5, 6, 7, 8, 9, 11}) {
        ForestOptions options;
        options.trees = 5;
        options.depth = depth;
        options.isFull = true;
        SCOPED_TRACE("depth " + std::to_string(depth));
        count += Check(options, static_cast<unsigned>(depth), {50, kRows});
    }
    EXPECT_GT(count, kRows);
}

/// More than a vector has marks for.
TEST(FlatForestOfManyFields, GivesTheNumbersOfItsSegments) {
    ForestOptions options;
    options.trees = 20;
    options.depth = 6;
    options.isFull = true;
    options.moreFields = 40;
    EXPECT_GT(Check(options, 8, {60, kRows}), kRows / 2);
    options.depth = 9;
    EXPECT_GT(Check(options, 9), kRows / 2);
}

TEST(FlatForestOfNoCuts, GivesTheNumbersOfItsSegments) {
    ForestOptions options;
    options.trees = 2;
    options.depth = 1;
    options.isFull = true;
    const std::string document = RandomForest(options, 7).Document();
    for (const char* bound : {"-INF", "INF"}) {
        SCOPED_TRACE(bound);
        std::string infinite =
            std::regex_replace(document, std::regex("value='0[.]3[0-9]*'"), std::string("value='") + bound + "'");
        infinite = std::regex_replace(infinite, std::regex("lessOrEqual"), "lessThan");
        infinite = std::regex_replace(infinite, std::regex("greaterThan"), "greaterOrEqual");
        EXPECT_NE(infinite.find(bound), std::string::npos);
        EXPECT_GT(CheckDocument(infinite, 7, {kRows}), kRows);
    }
}

/// A forest that is a segment is asked for single rows where few belong to it, else for whole blocks, by turns.
TEST(FlatForestInAModel, GivesTheNumbersOfItsSegments) {
    ForestOptions options;
    options.trees = 40;
    options.depth = 9;
    options.isFull = true;
    const std::string document = RandomForest(options, 5).Document();
    const std::size_t begin = document.find("<MiningModel");
    const std::size_t end = document.find("</PMML>");
    const std::string inner = document.substr(begin, end - begin);
    const std::string schema = document.substr(begin, document.find("<Segmentation") - begin);
    const std::string whole = document.substr(0, begin) + schema +
                              "<Segmentation multipleModelMethod='selectFirst'><Segment><SimplePredicate field='k' "
                              "operator='equal' value='3'/>" +
                              inner + "</Segment></Segmentation></MiningModel></PMML>";
    std::vector<Row> rows;
    for (std::size_t block = 0; block < 4; ++block) {
        for (const Row& row : RowsOf(static_cast<unsigned>(block), 40)) {
            rows.push_back(row);
            rows.back()[3].number = rows.size() / 256 % 2 == 1 || rows.size() % 50 == 0 ? 3.0 : 4.0;
        }
    }
    rows.resize(1024);
    const auto plan = ReadPlan(whole, MakeForest<Walk::FASTEST>);
    const std::vector<std::string> cases = CaseByCase(*plan, rows);
    const std::vector<std::string> columns = InColumns(plan, rows);
    std::size_t count = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const bool isPredicted = columns[row] != "none";
        count += isPredicted ? 1 : 0;
        EXPECT_EQ(columns[row].substr(0, columns[row].find(' ')),
                  isPredicted ? cases[row].substr(0, cases[row].find(' ')) : "none");
        EXPECT_EQ(isPredicted, cases[row].rfind("none", 0) != 0);
    }
    EXPECT_GT(count, 400U);
}

} // namespace
