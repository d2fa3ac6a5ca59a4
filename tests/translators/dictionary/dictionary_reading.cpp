#include "translators/dictionary/dictionary_reading.h"

#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <iomanip>
#include <limits>
#include <sstream>

namespace veltrane::tests {
namespace {

std::string WithCount(const std::string& fields) {
    int count = 0;
    for (std::size_t at = 0; (at = fields.find("<DataField", at)) != std::string::npos; ++at) {
        ++count;
    }
    return "<DataDictionary numberOfFields='" + std::to_string(count) + "'>" + fields + "</DataDictionary>";
}

std::string Show(const ScoreValue* value) {
    if (value->GetType() == ScoreValue::STRING_VALUE) {
        return "'" + value->GetString() + "'";
    }
    std::ostringstream out;
    out << std::setprecision(std::numeric_limits<double>::max_digits10) << value->GetDouble();
    return out.str();
}

} // namespace

DictionaryReading::Dictionary DictionaryReading::ReadElement(const std::string& element, bool withEncoders) {
    const ParsedXml document = ParseXml(element);
    return Dictionary(translator.ParseDictionary(document.Root(), withEncoders));
}

DictionaryReading::Dictionary DictionaryReading::Read(const std::string& fields, bool withEncoders) {
    return ReadElement(WithCount(fields), withEncoders);
}

ScoreDictVar* DictionaryReading::ReadField(const std::string& field, bool withEncoders) {
    fRead.push_back(Read(field, withEncoders));
    return fRead.back()->GetScoreDictVars().at(0);
}

void DictionaryReading::ExpectFault(const std::string& fields, const Failure& failure, const char* file, int line) {
    ExpectFailure([&] { Read(fields); }, failure, file, line);
}

std::vector<std::string> DictionaryReading::MissingRanges(const ScoreDictVar* var) {
    std::vector<std::string> ranges;
    if (!var->GetMissingValues()) {
        return ranges;
    }
    for (const ScoreValueRange* range : var->GetMissingValues()->GetMissingValues()) {
        ranges.push_back((range->GetLowEnd() ? "[" : "(") + Show(range->GetMin()) + ", " + Show(range->GetMax()) +
                         (range->GetHighEnd() ? "]" : ")"));
    }
    return ranges;
}

std::vector<std::string> DictionaryReading::Labels(const ScoreDictVar* var) {
    std::vector<std::string> labels;
    if (!var->GetValueLabels()) {
        return labels;
    }
    for (const ScoreValueLabel* label : var->GetValueLabels()->GetAllValueLabels()) {
        labels.push_back(Show(label->GetValue()) + "=" + label->GetLabel());
    }
    return labels;
}

std::string Categorical(const std::string& children, const std::string& attributes) {
    return "<DataField name='f' optype='categorical' " + attributes + ">" + children + "</DataField>";
}

std::string Continuous(const std::string& children, const std::string& attributes) {
    return "<DataField name='f' optype='continuous' " + attributes + ">" + children + "</DataField>";
}

} // namespace veltrane::tests
