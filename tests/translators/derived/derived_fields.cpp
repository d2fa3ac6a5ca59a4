#include "translators/derived/derived_fields.h"

#include "support/faults/failure.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/StringValue.h>

#include <charconv>
#include <sstream>

namespace veltrane::tests {

const char* const kInputFields = R"(
  <DataField name="x" optype="continuous" dataType="double"/>
  <DataField name="y" optype="continuous" dataType="double"/>
  <DataField name="o" optype="ordinal" dataType="integer"><Value value="1"/><Value value="2"/><Value value="3"/></DataField>
  <DataField name="n" optype="categorical" dataType="double"/>
  <DataField name="s" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/><Value value="?" property="missing"/></DataField>
  <DataField name="t" optype="categorical" dataType="string"/>
  <DataField name="d" optype="continuous" dataType="dateDaysSince[1970]"/>)";

namespace {

std::string Document(const std::string& children) {
    return "<PMML version='4.1'><DataDictionary numberOfFields='7'>" + std::string(kInputFields) +
           "</DataDictionary><TransformationDictionary>" + children + "</TransformationDictionary></PMML>";
}

bool IsTextInput(const std::string& name) {
    return name == "s" || name == "t";
}

std::string NumberText(double number) {
    if (NumericValue::IsSystemMissingValue(number)) {
        return "missing";
    }
    char buffer[32];
    return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
}

/// Goes through a dump from one of its fixed texts to the next.
class DumpReader {
public:
    explicit DumpReader(std::string text) : dump(std::move(text)) {}

    /// Behind the next occurrence of a text; false when there is none.
    bool Skip(const std::string& text) {
        const std::size_t found = dump.find(text, position);
        position = found == std::string::npos ? dump.size() : found + text.size();
        return found != std::string::npos;
    }

    /// What stands ahead of the next occurrence of a text.
    std::string Until(const std::string& text) {
        const std::size_t start = position;
        EXPECT_TRUE(Skip(text)) << text;
        return dump.substr(start, position - start - text.size());
    }

private:
    std::string dump;
    std::size_t position = 0;
};

} // namespace

DerivedFields::DerivedFields(const std::string& children)
    : document(ParseXml(Document(children))), translator(std::make_unique<PMMLTranslator>("UTF-8")),
      dictionary(translator->ParseDictionary(document.Find("DataDictionary"), false)),
      derived(translator->HandleTransformationDictionary(document.Find("TransformationDictionary"), dictionary.get())) {
    if (derived != nullptr) {
        derived->SetUpDerivedCaseRecord();
    }
}

TransformVar& DerivedFields::Var(const std::string& name) const {
    return dynamic_cast<TransformVar&>(*derived->GetVar(name));
}

const ScoreDictVar& DerivedFields::Input(const std::string& name) const {
    return *dictionary->GetVar(name);
}

std::string DerivedFields::Score(const std::string& name, const Case& values) {
    for (const auto& [input, text] : values) {
        if (record.GetIndex(input) < 0) {
            record.Add(input, nullptr);
        }
        if (IsTextInput(input)) {
            record.SetValue(input, text);
        } else if (input == "d") {
            record.SetValue(input, NumericValue(text).GetDouble(), ScoreDictVar::DT_DAYS_SINCE_1970);
        } else {
            record.SetValue(input, NumericValue(text).GetDouble());
        }
    }
    return ToText(derived->GetValuesForDerivedVars(&record, dictionary.get())->Get(name));
}

std::string DerivedField(const std::string& name, const std::string& attributes, const std::string& content) {
    return "<DerivedField name='" + name + "' " + attributes + ">" + content + "</DerivedField>";
}

std::string NumericField(const std::string& content) {
    return DerivedField("z", "optype='continuous' dataType='double'", content);
}

std::string TextField(const std::string& content) {
    return DerivedField("z", "optype='categorical' dataType='string'", content);
}

void ExpectReadFailure(const std::string& children, int id, const std::string& text, const char* file, int line) {
    ExpectFailure([&children] { DerivedFields fields(children); }, id, text, file, line);
}

void ExpectReadFailure(const std::string& children, const Failure& failure, const char* file, int line) {
    ExpectFailure([&children] { DerivedFields fields(children); }, failure, file, line);
}

std::string ToText(const ScoreValue* value) {
    if (value == nullptr) {
        return "none";
    }
    return value->GetType() == ScoreValue::STRING_VALUE ? "'" + value->GetString() + "'"
                                                        : NumberText(value->GetDouble());
}

// Takes the bins from the field's dump, where alone they all stand.
std::vector<std::string> BinsOf(const TransformVar& var) {
    std::ostringstream out;
    var.Display(out);
    DumpReader dump(out.str());
    std::vector<std::string> bins;
    if (!dump.Skip("Bin values\n")) {
        return bins;
    }
    while (dump.Skip("MinValue: ")) {
        const std::string low = dump.Until(";  MaxValue: ");
        const std::string high = dump.Until("; High End ");
        const bool highIncluded = dump.Until("; lower End ") == "included";
        const bool lowIncluded = dump.Until("\n End of Range Display\n\n") == "included";
        const std::string value = dump.Until("\n");
        bins.push_back((lowIncluded ? "[" : "(") + low + "," + high + (highIncluded ? "] " : ") ") +
                       (value == "recodeIntervalCopy" ? "copy" : value));
    }
    return bins;
}

std::vector<std::string> LabelsOf(const ScoreDictVar& var) {
    std::vector<std::string> labels;
    if (const ScoreValueLabelSet* set = var.GetValueLabels()) {
        for (const ScoreValueLabel* label : set->GetAllValueLabels()) {
            labels.push_back(label->GetValue()->GetString() + "=" + label->GetLabel());
        }
    }
    return labels;
}

} // namespace veltrane::tests
