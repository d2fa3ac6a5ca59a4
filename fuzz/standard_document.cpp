#include "standard_document.h"

#include "kit/functions/standard_functions.h"

#include <algorithm>

namespace veltrane::fuzz {

namespace {

constexpr int kDeepest = 4;
constexpr const char* kTypes[] = {"double", "string", "integer", "boolean", "float", "date", "time", "dateTime"};
constexpr const char* kFields[] = {"x", "s", "n", "b", "o", "day", "at", "m"};
constexpr const char* kConstants[] = {"1",     "0",         "-2.5",  "red",      "",        "true", "2020-02-29",
                                      "%5.1f", "[a-e]+|^$", "1e308", "13:05:09", "missing", "3",    "%Y-%m-%d"};
constexpr const char* kHead =
    "<PMML version='4.4'><Header/><DataDictionary>"
    "<DataField name='x' optype='continuous' dataType='double'>"
    "<Interval closure='closedOpen' leftMargin='-3' rightMargin='2000'/></DataField>"
    "<DataField name='s' optype='categorical' dataType='string'><Value value='n/a' property='missing'/>"
    "<Value value='abc' property='invalid'/></DataField>"
    "<DataField name='n' optype='continuous' dataType='integer'/>"
    "<DataField name='b' optype='categorical' dataType='boolean'/>"
    "<DataField name='o' optype='ordinal' dataType='string'><Value value='red'/><Value value='1'/><Value value=''/>"
    "<Value value='3'/></DataField>"
    "<DataField name='day' optype='ordinal' dataType='date'/><DataField name='at' optype='ordinal' dataType='time'/>"
    "<DataField name='m' optype='continuous' dataType='dateTime'/></DataDictionary><TransformationDictionary>"
    "<DefineFunction name='either' optype='categorical'><ParameterField name='p'/><ParameterField name='q'/>"
    "<Apply function='if'><Apply function='isMissing'><FieldRef field='p'/></Apply><FieldRef field='q'/>"
    "<FieldRef field='p'/></Apply></DefineFunction>";

class Maker {
public:
    explicit Maker(Bytes bytes) : fBytes(bytes) {}

    std::string Document() {
        fText = kHead;
        constexpr std::size_t kMostFields = 4;
        const std::size_t count = 1 + fBytes.Below(kMostFields);
        for (; fDerived < count; ++fDerived) {
            const std::string type = Pick(kTypes);
            fText += "<DerivedField name='d" + std::to_string(fDerived) + "' optype='" +
                     (type == "double" ? "continuous" : "categorical") + "' dataType='" + type + "'>";
            AddExpression(0);
            fText += "</DerivedField>";
        }
        return fText + "</TransformationDictionary></PMML>";
    }

private:
    template <std::size_t N>
    std::string Pick(const char* const (&from)[N]) {
        return from[fBytes.Below(N)];
    }

    /// An input field, or a derived one from before.
    std::string Field() {
        const std::size_t place = fBytes.Below(std::size(kFields) + fDerived);
        return place < std::size(kFields) ? kFields[place] : "d" + std::to_string(place - std::size(kFields));
    }

    /// An attribute that is there at times.
    std::string Maybe(const char* name) {
        return fBytes.Below(4) == 0 ? std::string(" ") + name + "='" + Pick(kConstants) + "'" : std::string();
    }

    void AddLeaf() {
        if (fBytes.Below(3) > 0) {
            fText += "<FieldRef field='" + Field() + "'" + Maybe("mapMissingTo") + "/>";
            return;
        }
        const bool isTyped = fBytes.Below(2) == 0;
        fText += "<Constant" + (isTyped ? " dataType='" + Pick(kTypes) + "'" : std::string()) + ">" + Pick(kConstants) +
                 "</Constant>";
    }

    void AddExpression(int depth) {
        const std::size_t choice = fBytes.Below(32);
        if (depth >= kDeepest || fBytes.AtEnd()) {
            AddLeaf();
        } else if (choice >= 8) {
            AddApply(depth);
        } else if (choice >= 6) {
            AddLeaf();
        } else {
            AddOther(choice);
        }
    }

    void AddApply(int depth) {
        const auto& functions = veltrane_kit::StandardFunctions().All();
        const std::size_t place = fBytes.Below(functions.size() + 1);
        const bool isOwn = place == functions.size();
        const std::size_t fewest = isOwn ? 2 : functions[place].fewest;
        const std::size_t most = isOwn ? 2 : std::min(functions[place].most, fewest + 2);
        fText += "<Apply function='" + (isOwn ? std::string("either") : functions[place].name) + "'" +
                 Maybe("mapMissingTo") + Maybe("defaultValue") +
                 (fBytes.Below(6) == 0 ? " invalidValueTreatment='asMissing'" : "") + ">";
        for (std::size_t count = fewest + fBytes.Below(most - fewest + 1); count > 0; --count) {
            AddExpression(depth + 1);
        }
        fText += "</Apply>";
    }

    void AddOther(std::size_t choice) {
        static constexpr const char* kAggregates[] = {"none", "avg",     "max", "median",
                                                      "min",  "product", "sum", "stddev"};
        static constexpr const char* kOutliers[] = {"asIs", "asMissingValues", "asExtremeValues"};
        switch (choice) {
        case 0:
            fText += "<NormDiscrete field='" + Field() + "' value='" + Pick(kConstants) + "'" +
                     (fBytes.Below(2) == 0 ? " mapMissingTo='0.5'" : "") + "/>";
            break;
        case 1:
            fText += "<NormContinuous field='" + Field() + "' outliers='" + Pick(kOutliers) +
                     "'><LinearNorm orig='-1' norm='0'/><LinearNorm orig='1' norm='3'/>"
                     "<LinearNorm orig='20000' norm='-1e308'/></NormContinuous>";
            break;
        case 2:
            fText += "<Discretize field='" + Field() + "'" + Maybe("mapMissingTo") + Maybe("defaultValue") +
                     "><DiscretizeBin binValue='" + Pick(kConstants) +
                     "'><Interval closure='openClosed' rightMargin='0'/></DiscretizeBin><DiscretizeBin binValue='1'>"
                     "<Interval closure='openOpen' leftMargin='0' rightMargin='100'/></DiscretizeBin></Discretize>";
            break;
        case 3:
            fText += "<MapValues outputColumn='out'" + Maybe("mapMissingTo") + Maybe("defaultValue") +
                     "><FieldColumnPair field='" + Field() + "' column='a'/><FieldColumnPair field='" + Field() +
                     "' column='b'/><InlineTable><row><a>1</a><b>red</b><out>one</out></row><row><a>red</a><b>1</b>"
                     "<out>2</out></row><row><a>true</a><b>true</b><out/></row></InlineTable></MapValues>";
            break;
        case 4:
            fText += "<Lag field='" + Field() + "' n='" + std::to_string(1 + fBytes.Below(3)) + "' aggregate='" +
                     Pick(kAggregates) + "'>" +
                     (fBytes.Below(3) == 0 ? "<BlockIndicator field='" + Field() + "'/>" : "") + "</Lag>";
            break;
        default:
            fText += "<TextIndex textField='" + Field() + "'><Constant>" + Pick(kConstants) + "</Constant></TextIndex>";
        }
    }

    Bytes fBytes;
    std::string fText;
    std::size_t fDerived = 0;
};

} // namespace

std::string MakeStandardDocument(Bytes bytes) {
    return Maker(bytes).Document();
}

} // namespace veltrane::fuzz
