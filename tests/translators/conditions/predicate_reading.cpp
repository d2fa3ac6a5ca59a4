#include "translators/conditions/predicate_reading.h"

#include "support/faults/failure.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <sstream>
#include <vector>

namespace veltrane::tests {
namespace {

const char* const kFields = R"(<DataDictionary numberOfFields="15">
  <DataField name="x" optype="continuous" dataType="double"/>
  <DataField name="d" optype="continuous" dataType="dateDaysSince[1970]"/>
  <DataField name="i" optype="ordinal" dataType="integer"><Value value="1"/><Value value="2"/><Value value="3"/></DataField>
  <DataField name="o" optype="ordinal" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/></DataField>
  <DataField name="h" optype="ordinal" dataType="string"><Extension name="emptyStringOk" value="true"/><Value value=""/><Value value="a"/><Value value="b"/></DataField>
  <DataField name="q" optype="ordinal" dataType="date"><Value value="1"/><Value value="2"/></DataField>
  <DataField name="v" optype="ordinal" dataType="string"/>
  <DataField name="j" optype="ordinal" dataType="integer"/>
  <DataField name="s" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/><Value value="?" property="missing"/></DataField>
  <DataField name="w" optype="categorical" dataType="string"><Extension name="emptyStringOk" value="true"/><Value value=""/><Value value="a"/><Value value="b"/></DataField>
  <DataField name="n" optype="categorical" dataType="double"><Value value="1"/><Value value="2"/><Value value="3"/></DataField>
  <DataField name="g" optype="categorical" dataType="double"><Value value="1234567"/><Value value="2.5"/></DataField>
  <DataField name="k" optype="categorical" dataType="date"><Value value="1"/><Value value="2"/></DataField>
  <DataField name="t" optype="categorical" dataType="string"/>
  <DataField name="m" optype="categorical" dataType="double"/>
</DataDictionary>)";

std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() && &part == &parts.front() ? "" : ",") + part;
    }
    return text;
}

std::string SimpleElement(const std::string& attributes) {
    return "<SimplePredicate " + attributes + "/>";
}

std::string SetElement(const std::string& attributes, const std::string& content) {
    return "<SimpleSetPredicate " + attributes + ">" + content + "</SimpleSetPredicate>";
}

} // namespace

PredicateReading::PredicateReading() {
    dictionary.reset(translator.ParseDictionary(Element(kFields), false));
}

xercesc::DOMElement* PredicateReading::Element(const std::string& text) {
    return fDocuments.emplace_back(text).Root();
}

PredicateReading::Simple PredicateReading::ReadSimple(const std::string& attributes, bool ordinalAsScale) {
    return Simple(
        translator.ParsePredicate(Element(SimpleElement(attributes)), dictionary.get(), nullptr, ordinalAsScale));
}

PredicateReading::Set PredicateReading::ReadSet(const std::string& attributes, const std::string& content) {
    return Set(translator.ParseSetPredicate(Element(SetElement(attributes, content)), dictionary.get(), nullptr));
}

PredicateReading::Any PredicateReading::ReadCompound(const std::string& booleanOperator, const std::string& content,
                                                     bool ordinalAsScale) {
    const std::string element =
        "<CompoundPredicate booleanOperator='" + booleanOperator + "'>" + content + "</CompoundPredicate>";
    return Any(translator.ParseCompoundPredicate(Element(element), dictionary.get(), nullptr, ordinalAsScale));
}

void PredicateReading::ExpectSimpleFault(const std::string& attributes, const Failure& failure, const char* file,
                                         int line) {
    ExpectFailure([&] { ReadSimple(attributes); }, failure, file, line);
}

void PredicateReading::ExpectSetFault(const std::string& attributes, const std::string& content, const Failure& failure,
                                      const char* file, int line) {
    ExpectFailure([&] { ReadSet(attributes, content); }, failure, file, line);
}

void PredicateReading::ExpectCompoundFault(const std::string& element, const Failure& failure, const char* file,
                                           int line) {
    ExpectFailure([&] { Any(translator.ParseCompoundPredicate(Element(element), dictionary.get(), nullptr, false)); },
                  failure, file, line);
}

std::string ValuesOf(const ScoreSplitVar* split) {
    std::vector<std::string> values;
    for (const ScoreValue* value : dynamic_cast<const DiscreteSplit&>(*split).GetSplitValues()) {
        values.push_back(value->GetString());
    }
    return Joined(values);
}

std::string NumbersOf(const ScoreSplitVar* split) {
    std::vector<std::string> numbers;
    for (int number = -1; number < 10; ++number) {
        if (split->GetSplitChildIndex(static_cast<double>(number)) == 0) {
            numbers.push_back(std::to_string(number));
        }
    }
    return Joined(numbers);
}

std::string FirstRangeOf(const ScoreSplitVar* split) {
    const ScoreValueRange* range = dynamic_cast<const ScaleSplit&>(*split).GetSplitValueRangeFirst();
    if (range == nullptr) {
        return "none";
    }
    std::ostringstream text;
    text << (range->GetLowEnd() ? '[' : '(') << range->GetMin()->GetDouble() << ',' << range->GetMax()->GetDouble()
         << (range->GetHighEnd() ? ']' : ')');
    return text.str();
}

bool Holds(const ScoreSplitVar* split, double number) {
    return split->GetSplitChildIndex(number) == 0;
}

std::string CategoriesOf(const ScoreDictVar& var) {
    std::vector<std::string> labels;
    if (var.GetValueLabels() != nullptr) {
        for (const ScoreValueLabel* label : var.GetValueLabels()->GetAllValueLabels()) {
            labels.push_back(label->GetLabel());
        }
    }
    return Joined(labels);
}

std::string Shape(const ScorePredicate* predicate) {
    if (predicate == nullptr) {
        return "null";
    }
    static const char* const kTypes[] = {"compound", "simple", "set", "true", "false"};
    static const char* const kOperators[] = {"or", "and", "xor", "surrogate"};
    const auto* compound = dynamic_cast<const CompoundPredicate*>(predicate);
    if (compound == nullptr) {
        return kTypes[predicate->GetPredType()];
    }
    std::vector<std::string> children;
    for (const ScorePredicate* child : compound->GetPredicates()) {
        children.push_back(Shape(child));
    }
    return std::string(kOperators[compound->GetBoolOperator()]) + "(" + Joined(children) + ")";
}

} // namespace veltrane::tests
