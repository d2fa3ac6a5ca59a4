#ifndef VELTRANE_TESTS_TRANSLATORS_DERIVED_FIELDS_H
#define VELTRANE_TESTS_TRANSLATORS_DERIVED_FIELDS_H

#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Documents with derived fields over a data dictionary that all tests share.
namespace veltrane::tests {

/// The inputs of every document here:
///
///     x, y   continuous, double
///     o      ordinal, integer, values 1, 2 and 3
///     n      categorical, double, without values
///     s      categorical, string, values a, b and c; "?" is declared missing
///     t      categorical, string, without values
///     d      continuous, dateDaysSince[1970]
extern const char* const kInputFields;

/// One case: input name to text; numbers are read as such for every input but s and t. "" is a missing number.
using Case = std::vector<std::pair<std::string, std::string>>;

/// A document read up to its derived fields.
class DerivedFields {
public:
    /// Reads a document with these children of its TransformationDictionary.
    explicit DerivedFields(const std::string& children);

    MCVeltrane_900::TransformVar& Var(const std::string& name) const;
    const MCVeltrane_900::ScoreDictVar& Input(const std::string& name) const;

    /// The value of a derived field for the next case, as ToText gives it. The first case gives the record its layout:
    /// name all inputs that any case needs.
    std::string Score(const std::string& name, const Case& values);

    ParsedXml document;
    std::unique_ptr<MCVeltrane_900::PMMLTranslator> translator;
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> derived;

private:
    MCVeltrane_900::CaseRecord record;
};

/// One DerivedField with this content; attributes such as "optype='continuous' dataType='double'".
std::string DerivedField(const std::string& name, const std::string& attributes, const std::string& content);

/// An Apply of a function to these arguments.
inline std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

/// The two usual kinds of field, named "z".
std::string NumericField(const std::string& content);
std::string TextField(const std::string& content);

/// Expects that reading these children of the TransformationDictionary fails with this error code and text.
void ExpectReadFailure(const std::string& children, const Failure& failure, const char* file = __builtin_FILE(),
                       int line = __builtin_LINE());
void ExpectReadFailure(const std::string& children, int id, const std::string& text,
                       const char* file = __builtin_FILE(), int line = __builtin_LINE());

/// A number in its shortest form, "missing" for the missing number, a text in single quotes, "none" for null.
std::string ToText(const MCVeltrane_900::ScoreValue* value);

/// A field's bins in order, as "[0,1) a"; "copy" stands for a bin that copies its input.
std::vector<std::string> BinsOf(const MCVeltrane_900::TransformVar& var);

/// A field's labels as "value=label", in order.
std::vector<std::string> LabelsOf(const MCVeltrane_900::ScoreDictVar& var);

} // namespace veltrane::tests

#endif
