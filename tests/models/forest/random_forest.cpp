#include "models/forest/random_forest.h"

#include <algorithm>

namespace veltrane::tests {

namespace {

std::string Joined(const std::vector<std::string>& parts) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += part + " ";
    }
    return joined;
}

std::string TextField(const std::string& name, const std::string& level) {
    std::string field = "<DataField name='" + name + "' optype='" + level + "' dataType='string'>";
    for (const std::string& value : RandomForest::Texts(name.front())) {
        field += "<Value value='" + value + "'/>";
    }
    return field + "</DataField>";
}

std::string NumberField(const std::string& name, const std::string& type) {
    return "<DataField name='" + name + "' optype='continuous' dataType='" + type + "'/>";
}

std::string Presence(const std::string& field, bool isMissing) {
    return "<SimplePredicate field='" + field + "' operator='" + (isMissing ? "isMissing" : "isNotMissing") + "'/>";
}

std::string Compound(const std::string& word, const std::string& parts) {
    return "<CompoundPredicate booleanOperator='" + word + "'>" + parts + "</CompoundPredicate>";
}

} // namespace

const std::vector<double>& RandomForest::Numbers() {
    static const std::vector<double> numbers{-1e300, -7, -2.5, -1, -0.0, 0.1, 0.30000001, 1, 2, 3, 5, 8, 1e9};
    return numbers;
}

std::vector<std::string> RandomForest::Texts(char field) {
    if (field == 'o') {
        return {"low", "mid", "high", "top"};
    }
    std::vector<std::string> texts;
    const int count = field == 'w' ? 70 : 6;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        texts.push_back(field + std::to_string(i));
    }
    return texts;
}

/// Those of double precision.
std::vector<std::string> RandomForest::NumberFields() const {
    std::vector<std::string> fields{"x", "z"};
    for (int field = 0; field < fOptions.moreFields; ++field) {
        fields.push_back("n" + std::to_string(field));
    }
    return fields;
}

std::string RandomForest::Schema() const {
    std::string schema = "<MiningSchema><MiningField name='y' usageType='target'/>";
    std::vector<std::string> fields = NumberFields();
    fields.insert(fields.end(), {"f", "k", "c", "o", "w"});
    for (const std::string& name : fields) {
        schema += "<MiningField name='" + name + "' invalidValueTreatment='asIs'/>";
    }
    return schema + "</MiningSchema>";
}

std::string RandomForest::Document() {
    std::string document = "<PMML version='4.4'><DataDictionary>";
    for (const std::string& field : NumberFields()) {
        document += NumberField(field, "double");
    }
    document += NumberField("f", "float") + NumberField("k", "integer") + TextField("c", "categorical") +
                TextField("o", "ordinal") + TextField("w", "categorical");
    const std::string function = fOptions.isClassification ? "classification" : "regression";
    document += fOptions.isClassification ? "<DataField name='y' optype='categorical' dataType='string'>"
                                            "<Value value='a'/><Value value='b'/><Value value='d'/></DataField>"
                                          : NumberField("y", "double");
    document += "</DataDictionary><MiningModel functionName='" + function + "'>" + Schema() +
                "<Output><OutputField name='out' feature='predictedValue'/></Output><Segmentation "
                "multipleModelMethod='" +
                fOptions.method + "' missingPredictionTreatment='" + fOptions.missingPrediction +
                "' missingThreshold='0.5'>";
    for (int tree = 0; tree < fOptions.trees; ++tree) {
        document += "<Segment weight='" + std::to_string(1 + Below(5)) + ".1'><True/>" + Tree() + "</Segment>";
    }
    return document + "</Segmentation></MiningModel></PMML>";
}

std::string RandomForest::Tree() {
    const std::string function = fOptions.isClassification ? "classification" : "regression";
    const std::string root = Perhaps(8) ? Split().front() : "<True/>";
    return "<TreeModel functionName='" + function + "' missingValueStrategy='" + fOptions.strategy +
           "' noTrueChildStrategy='" + fOptions.noTrueChild + "' missingValuePenalty='0.5'>" + Schema() +
           (fOptions.isFull ? FullTree() : Node(root, fOptions.depth)) + "</TreeModel>";
}

std::string RandomForest::FullTree() {
    std::vector<std::string> fields = NumberFields();
    fields.emplace_back("f");
    std::shuffle(fields.begin(), fields.end(), fRandom);
    std::vector<Range> ranges;
    ranges.reserve(fields.size());
    for (const std::string& field : fields) {
        ranges.push_back({field, 0, Numbers().size() - 1});
    }
    return FullNode("<True/>", fOptions.depth, ranges);
}

/// Parts the longest range in the middle.
std::string RandomForest::FullNode(const std::string& condition, int depth, std::vector<Range> ranges) {
    const auto longest = std::max_element(ranges.begin(), ranges.end(), [](const Range& left, const Range& right) {
        return left.high - left.low < right.high - right.low;
    });
    std::string children;
    if (depth > 0 && longest->low < longest->high) {
        const Range range = *longest;
        const std::size_t middle = (range.low + range.high) / 2;
        const double bound = Numbers()[middle];
        const std::string text = bound == -1e300 ? "-1e300" : std::to_string(bound);
        longest->high = middle;
        children += FullNode(Test(range.field, "lessOrEqual", text), depth - 1, ranges);
        *longest = {range.field, middle + 1, range.high};
        children += FullNode(Test(range.field, "greaterThan", text), depth - 1, ranges);
    }
    const std::string id = std::to_string(fNextId++);
    return "<Node id='" + id + "' score='" + id + "'>" + condition + children + "</Node>";
}

std::string RandomForest::Node(const std::string& condition, int depth) {
    std::vector<std::string> splits;
    if (depth > 0 && !Perhaps(fOptions.leaves)) {
        splits = Split();
    }
    const int id = fNextId++;
    std::string children;
    std::string child;
    for (const std::string& split : splits) {
        const std::string next = std::to_string(fNextId);
        child = child.empty() || Perhaps(splits.size()) ? next : child;
        children += Node(split, depth - 1);
    }
    const bool hasScore = splits.empty() || !Perhaps(3);
    const std::string score = fOptions.isClassification ? std::string(1, "abd"[Below(3)]) : Number();
    return "<Node id='" + std::to_string(id) + "' recordCount='" + std::to_string(1 + Below(50)) + "'" +
           (hasScore ? " score='" + score + "'" : "") +
           (!child.empty() && !Perhaps(4) ? " defaultChild='" + child + "'" : "") + ">" + condition +
           (fOptions.hasShares && fOptions.isClassification ? Shares() : "") + children + "</Node>";
}

std::string RandomForest::Shares() {
    std::string shares;
    for (const char* category : {"a", "b", "d"}) {
        shares += std::string("<ScoreDistribution value='") + category + "' recordCount='" +
                  std::to_string(1 + Below(30)) + "'/>";
    }
    return shares;
}

std::string RandomForest::Number() {
    const double number = Numbers()[Below(Numbers().size())];
    return number == -1e300 ? "-1e300" : std::to_string(number);
}

std::string RandomForest::Test(const std::string& field, const std::string& comparison, const std::string& value) {
    return "<SimplePredicate field='" + field + "' operator='" + comparison + "' value='" + value + "'/>";
}

std::string RandomForest::Set(const std::string& field, const std::string& isIn,
                              const std::vector<std::string>& values) {
    return "<SimpleSetPredicate field='" + field + "' booleanOperator='" + isIn + "'><Array type='string'>" +
           Joined(values) + "</Array></SimpleSetPredicate>";
}

/// The conditions of the children of a node.
std::vector<std::string> RandomForest::Split() {
    return fOptions.hasSets && Perhaps(2) ? SplitTexts() : SplitNumber();
}

std::vector<std::string> RandomForest::SplitNumber() {
    static const char* const kPairs[][2] = {{"lessOrEqual", "greaterThan"}, {"lessThan", "greaterOrEqual"},
                                            {"greaterThan", "lessOrEqual"}, {"greaterOrEqual", "lessThan"},
                                            {"equal", "notEqual"},          {"notEqual", "equal"}};
    const std::string field = std::string(1, "xxzfk"[Below(5)]);
    const std::string value = field == "k" ? std::to_string(static_cast<int>(Below(7)) - 2) : Number();
    const auto& pair = kPairs[Below(10) < 8 ? Below(4) : 4 + Below(2)];
    const std::string first = Test(field, pair[0], value);
    const std::string second = Test(field, pair[1], value);
    switch (Below(9)) {
    case 0:
        return {first};
    case 1:
        return {first, "<True/>"};
    case 2:
        return {first, second, Presence(field, true)};
    case 3:
        return {Presence(field, true), first, second};
    case 4:
        return {Compound("or", first + Presence(field, true)), second};
    case 5:
        return {Compound("surrogate", first + "<False/>"), Compound("surrogate", second + "<True/>")};
    case 6:
        return {first, Test("z", "greaterThan", Number()), "<False/>", Test(field, "lessThan", Number())};
    default:
        return {first, second};
    }
}

std::vector<std::string> RandomForest::SplitTexts() {
    const std::string field = std::string(1, fOptions.isWide ? "cowk"[Below(4)] : "cco"[Below(3)]);
    std::vector<std::string> texts =
        field == "k" ? std::vector<std::string>{"-1", "0", "1", "2", "7"} : Texts(field[0]);
    std::shuffle(texts.begin(), texts.end(), fRandom);
    const auto middle = texts.begin() + static_cast<std::ptrdiff_t>(1 + Below(texts.size() - 1));
    const std::vector<std::string> left(texts.begin(), middle);
    const std::vector<std::string> right(middle, texts.end());
    switch (Below(8)) {
    case 0:
        return {Set(field, "isIn", left), Set(field, "isNotIn", left)};
    case 1:
        return {Set(field, "isNotIn", left)};
    case 2:
        return {Test(field, "equal", left.front()), Test(field, "notEqual", left.front())};
    case 3:
        return field == "o" ? std::vector<std::string>{Test("o", "lessThan", left.front()),
                                                       Test("o", "greaterOrEqual", left.front())}
                            : std::vector<std::string>{Set(field, "isIn", left), "<True/>"};
    case 4:
        return {Compound("or", Set(field, "isIn", left) + Presence(field, true)), Set(field, "isIn", right)};
    case 5:
        return {Set(field, "isIn", {left.front()}), Set(field, "isIn", right)};
    default:
        return {Set(field, "isIn", left), Set(field, "isIn", right)};
    }
}

} // namespace veltrane::tests
