#include "models/mining/random_segments.h"

#include "models/mining/small_ensemble.h"

namespace veltrane::tests {

namespace {

const std::vector<std::string> kCategories = {"a", "b", "c"};
const std::vector<std::string> kFeatures = {"predictedValue", "predictedDisplayValue",
                                            "probability",    "confidence",
                                            "entityId",       "affinity",
                                            "standardError",  "reasonCode",
                                            "residual",       "transformedValue",
                                            "decision",       "warning"};
const std::vector<std::string> kSums = {"sum", "weightedSum", "average", "weightedAverage", "median", "weightedMedian"};
const std::vector<std::string> kVotes = {"majorityVote", "weightedMajorityVote", "average", "max", "median"};
const std::vector<std::string> kSelections = {"selectFirst", "selectAll", "modelChain", "modelChain"};

std::string Of(const std::string& tag, const std::string& attributes, const std::string& content = "") {
    return "<" + tag + " " + attributes + ">" + content + "</" + tag + ">";
}

} // namespace

std::string RandomSegments::Whole(int from, int to) {
    return std::to_string(from + static_cast<int>(Below(static_cast<std::size_t>(to - from + 1))));
}

std::string RandomSegments::Document() {
    fIsCategory = Perhaps(2);
    const std::string target = fIsCategory ? "y" : "w";
    const std::string head = Schema(target) + Output({"s0"}) + Targets(target);
    std::string categories;
    for (const std::string& category : kCategories) {
        categories += "<Value value='" + category + "'/>";
    }
    return "<PMML version='4.4'><DataDictionary>" +
           Of("DataField", "name='y' optype='categorical' dataType='string'", categories) + NumberField("w") +
           NumberField("x") + NumberField("z") +
           Of("DataField", "name='k' optype='categorical' dataType='string'", "<Value value='u'/><Value value='v'/>") +
           "</DataDictionary>" + Mining(head, 2) + "</PMML>";
}

std::string RandomSegments::Schema(const std::string& target) {
    std::string fields = target.empty() ? "" : "<MiningField name='" + target + "' usageType='target'/>";
    for (const char* name : {"x", "z", "k"}) {
        const bool isNumber = name[0] != 'k';
        fields += "<MiningField name='" + std::string(name) + "'" +
                  (isNumber && Perhaps(6) ? " missingValueReplacement='1'" : "") +
                  (Perhaps(6) ? " invalidValueTreatment='asIs'" : "") + "/>";
    }
    for (const std::string& name : fTold) {
        fields += "<MiningField name='" + name + "'" + (Perhaps(4) ? " missingValueReplacement='2'" : "") + "/>";
    }
    return "<MiningSchema>" + fields + "</MiningSchema>";
}

std::string RandomSegments::OutputField(const std::string& name, const std::vector<std::string>& segments) {
    const std::string feature = OneOf(kFeatures);
    std::string attributes = "name='" + name + "' feature='" + feature + "'";
    if (feature == "transformedValue" || feature == "decision") {
        const std::string field = fNames.empty() || Perhaps(2) ? OneOf({"x", "z"}) : OneOf(fNames);
        return Of("OutputField", attributes + " dataType='double' optype='continuous'",
                  Of("Apply", "function='" + OneOf({"+", "*", "max"}) + "'",
                     "<FieldRef field='" + field + "'/><Constant dataType='double'>" + Whole(-3, 3) + "</Constant>"));
    }
    if ((feature == "probability" || feature == "confidence") && fIsCategory && segments.empty()) {
        attributes += " value='" + OneOf(kCategories) + "'";
    }
    if (Perhaps(4)) {
        attributes += " rank='" + Whole(1, 3) + "'";
    }
    if (!segments.empty() && Perhaps(3)) {
        attributes += " segmentId='" + OneOf(segments) + "'";
    }
    if (Perhaps(6)) {
        attributes += " isFinalResult='false'";
    }
    return Of("OutputField", attributes);
}

std::string RandomSegments::Output(const std::vector<std::string>& segments) {
    fNames.clear();
    std::string fields;
    for (std::size_t count = Below(5); count > 0; --count) {
        const std::string name = "o" + std::to_string(fNext++);
        const std::string field = OutputField(name, segments);
        if (field.find("<Apply") != std::string::npos) {
            fNames.push_back(name);
        }
        fields += field;
    }
    return fields.empty() ? "" : "<Output>" + fields + "</Output>";
}

std::string RandomSegments::Targets(const std::string& target) {
    if (target.empty() || !Perhaps(4)) {
        return "";
    }
    if (fIsCategory) {
        return "<Targets><Target field='" + target +
               "'><TargetValue value='a' priorProbability='0.5' displayValue='first'/><TargetValue value='b' "
               "priorProbability='0.25'/></Target></Targets>";
    }
    return "<Targets><Target field='" + target + "' rescaleFactor='" + Whole(-1, 2) + "'" +
           (Perhaps(2) ? " castInteger='round'" : "") + ">" + (Perhaps(2) ? "<TargetValue defaultValue='7'/>" : "") +
           "</Target></Targets>";
}

std::string RandomSegments::Predicate() {
    switch (Below(fTold.empty() ? 6 : 8)) {
    case 0:
        return "<SimplePredicate field='x' operator='lessThan' value='" + Whole(-1, 2) + "'/>";
    case 1:
        return "<SimplePredicate field='z' operator='isNotMissing'/>";
    case 2:
        return "<SimplePredicate field='k' operator='equal' value='u'/>";
    case 3:
        return Perhaps(3) ? "<False/>" : "<True/>";
    case 6:
        return "<SimplePredicate field='" + OneOf(fTold) + "' operator='isMissing'/>";
    case 7:
        return "<SimplePredicate field='" + OneOf(fTold) + "' operator='greaterOrEqual' value='" + Whole(-1, 1) + "'/>";
    default:
        return "<True/>";
    }
}

std::string RandomSegments::Tree(const std::string& head) {
    std::string nodes;
    for (std::size_t leaf = Below(3) + 1; leaf > 0; --leaf) {
        std::string shares;
        for (const std::string& category : kCategories) {
            shares += "<ScoreDistribution value='" + category + "' recordCount='" + Whole(1, 5) + "'/>";
        }
        const std::string score =
            fIsCategory ? (Perhaps(2) ? " score='" + OneOf(kCategories) + "'" : "") : " score='" + Whole(-5, 5) + "'";
        nodes += Of("Node", "id='n" + std::to_string(leaf) + "'" + score,
                    Predicate() + (fIsCategory ? shares : std::string()));
    }
    return Of("TreeModel",
              "functionName='" + std::string(fIsCategory ? "classification" : "regression") + "'" +
                  OneOf({"", " noTrueChildStrategy='returnLastPrediction'", " missingValueStrategy='nullPrediction'"}),
              head + "<Node id='root'><True/>" + nodes + "</Node>");
}

std::string RandomSegments::Regression(const std::string& head) {
    std::vector<std::string> inputs = {"x", "z"};
    inputs.insert(inputs.end(), fTold.begin(), fTold.end());
    std::string tables;
    for (std::size_t table = 0; table < (fIsCategory ? kCategories.size() : 1); ++table) {
        tables += Of("RegressionTable",
                     "intercept='" + Whole(-2, 2) + "'" +
                         (fIsCategory ? " targetCategory='" + kCategories[table] + "'" : std::string()),
                     "<NumericPredictor name='" + OneOf(inputs) + "' coefficient='" + Whole(-3, 3) + "'/>");
    }
    return Of("RegressionModel",
              fIsCategory ? "functionName='classification' normalizationMethod='softmax'" : "functionName='regression'",
              head + tables);
}

/// A scorecard or a general regression with standard errors.
std::string RandomSegments::Number(const std::string& head) {
    if (Perhaps(2)) {
        return Of("Scorecard", "functionName='regression' initialScore='1'",
                  head +
                      "<Characteristics><Characteristic reasonCode='one' baselineScore='3'><Attribute partialScore='" +
                      Whole(0, 6) + "'>" + Predicate() +
                      "</Attribute><Attribute partialScore='2' reasonCode='other'><True/></Attribute></Characteristic>"
                      "<Characteristic reasonCode='two' baselineScore='" +
                      Whole(0, 4) +
                      "'><Attribute><True/><ComplexPartialScore><Apply function='*'><FieldRef field='z'/>"
                      "<Constant>2</Constant></Apply></ComplexPartialScore></Attribute></Characteristic>"
                      "</Characteristics>");
    }
    return Of("GeneralRegressionModel", "functionName='regression' modelType='generalLinear'",
              head +
                  "<ParameterList><Parameter name='p0'/><Parameter name='p1'/></ParameterList><CovariateList>"
                  "<Predictor name='x'/></CovariateList><PPMatrix><PPCell value='1' predictorName='x' "
                  "parameterName='p1'/></PPMatrix><PCovMatrix><PCovCell pRow='p0' pCol='p0' value='1'/><PCovCell "
                  "pRow='p1' pCol='p1' value='4'/></PCovMatrix><ParamMatrix><PCell parameterName='p0' beta='" +
                  Whole(-2, 2) + "'/><PCell parameterName='p1' beta='2'/></ParamMatrix>");
}

/// Rules or a network.
std::string RandomSegments::Category(const std::string& head) {
    if (Perhaps(2)) {
        std::string rules;
        for (std::size_t count = Below(4) + 1; count > 0; --count) {
            rules +=
                Of("SimpleRule",
                   "score='" + OneOf(kCategories) + "' weight='" + Whole(1, 4) + "' confidence='0." + Whole(1, 9) + "'",
                   Predicate());
        }
        return Of("RuleSetModel", "functionName='classification'",
                  head + Of("RuleSet", Perhaps(2) ? "defaultScore='c' defaultConfidence='0.3'" : "",
                            "<RuleSelectionMethod criterion='" + OneOf({"firstHit", "weightedMax", "weightedSum"}) +
                                "'/>" + rules));
    }
    std::string neurons;
    std::string outputs;
    for (const std::string& category : kCategories) {
        neurons += Of("Neuron", "id='" + category + "' bias='" + Whole(-1, 1) + "'",
                      "<Con from='0' weight='" + Whole(-2, 2) + "'/>");
        outputs += Of("NeuralOutput", "outputNeuron='" + category + "'",
                      "<DerivedField optype='continuous' dataType='double'><NormDiscrete field='y' value='" + category +
                          "'/></DerivedField>");
    }
    return Of("NeuralNetwork", "functionName='classification' activationFunction='logistic'",
              head +
                  "<NeuralInputs><NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef "
                  "field='z'/></DerivedField></NeuralInput></NeuralInputs><NeuralLayer>" +
                  neurons + "</NeuralLayer><NeuralOutputs>" + outputs + "</NeuralOutputs>");
}

/// A model of the function at hand, whose numbers those behind it may read.
std::string RandomSegments::Model(int depth) {
    const std::string target = fIsCategory ? "y" : OneOf({"w", ""});
    const std::string schema = Schema(target);
    const std::string head = schema + Output({}) + Targets(target);
    switch (Below(depth > 0 ? 4 : 3)) {
    case 0:
        return Tree(head);
    case 1:
        return Regression(head);
    case 2:
        return fIsCategory ? Category(head) : Number(head);
    default:
        return Mining(head, depth - 1);
    }
}

std::string RandomSegments::Mining(const std::string& head, int depth) {
    const bool isCategory = fIsCategory;
    const bool isSelection = Perhaps(2);
    const std::string method = OneOf(isSelection ? kSelections : isCategory ? kVotes : kSums);
    const std::vector<std::string> toldOutside = fTold;
    const std::size_t count = Below(4) + 1;
    std::string segments;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isFree = method == "modelChain" && i + 1 < count;
        fIsCategory = isFree ? Perhaps(2) : isCategory;
        const std::string condition = Predicate();
        const std::string told = "told" + std::to_string(fNext++);
        std::string model = Model(depth);
        if (isSelection && Perhaps(2)) {
            const std::string field = "<OutputField name='" + told +
                                      "' dataType='double' optype='continuous' feature='" +
                                      (fIsCategory ? "probability' value='a'/>" : "predictedValue'/>");
            const std::size_t end = model.find("</MiningSchema>") + std::string("</MiningSchema>").size();
            const bool hasOutput = model.compare(end, 8, "<Output>") == 0;
            model.insert(hasOutput ? end + 8 : end, hasOutput ? field : "<Output>" + field + "</Output>");
            fTold.push_back(told);
        }
        segments += Of("Segment", "id='s" + std::to_string(i) + "' weight='" + Whole(1, 3) + "'", condition + model);
    }
    fTold = toldOutside;
    fIsCategory = isCategory;
    return Of("MiningModel", "functionName='" + std::string(isCategory ? "classification" : "regression") + "'",
              head + Of("Segmentation",
                        "multipleModelMethod='" + method + "' missingPredictionTreatment='" +
                            OneOf({"continue", "skipSegment", "returnMissing"}) + "'",
                        segments));
}

} // namespace veltrane::tests
