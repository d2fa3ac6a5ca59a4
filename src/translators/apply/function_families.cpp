#include "translators/apply/function_rules.h"
#include "translators/dictionary/measure_levels.h"

#include <MCVeltrane_900/PMMLTranslator.h>

namespace MCVeltrane_900 {

using namespace veltrane::translators;
using Function = TransformationDictionary::TransformFunction;

namespace {

constexpr unsigned int kNumeric = ARITHMETIC | MATHEMATICS | STATISTIC | DATE_TIME | NUMERIC_RESULT;

bool IsOf(Function function, unsigned int families) {
    return (RulesOf(function).families & families) != 0;
}

} // namespace

Function PMMLTranslator::GetTransFunction(const std::string& name) const {
    const auto found = fFunctionMap.find(name);
    return found != fFunctionMap.end() ? found->second : TransformationDictionary::TF_NONE;
}

std::string PMMLTranslator::ToString(Function function) {
    return std::string(RulesOf(function).word);
}

std::string PMMLTranslator::ToString(ScoreDictVar::MeasureLevel level) {
    return MeasureLevelText(level);
}

bool PMMLTranslator::IsArithmeticFunction(Function function) {
    return IsOf(function, ARITHMETIC);
}
bool PMMLTranslator::IsMathematicsFunction(Function function) {
    return IsOf(function, MATHEMATICS);
}
bool PMMLTranslator::IsStatisticFunction(Function function) {
    return IsOf(function, STATISTIC);
}
bool PMMLTranslator::IsDateTimeFunction(Function function) {
    return IsOf(function, DATE_TIME);
}
bool PMMLTranslator::IsLogicFunction(Function function) {
    return IsOf(function, LOGIC);
}
bool PMMLTranslator::IsStringFunction(Function function) {
    return IsOf(function, STRING);
}
bool PMMLTranslator::IsMixOutputFunction(Function function) {
    return IsOf(function, MIX_OUTPUT);
}
bool PMMLTranslator::IsNumericFunction(Function function) {
    return IsOf(function, kNumeric);
}
bool PMMLTranslator::IsInputNumericFunction(Function function) {
    return IsNumericFunction(function);
}

bool PMMLTranslator::IsOutputNumericFunction(Function function) {
    return IsOf(function, kNumeric | LOGIC | OUTPUT_NUMERIC);
}

bool PMMLTranslator::IsOutputStringFunction(Function function) {
    return IsOf(function, STRING);
}
bool PMMLTranslator::IsInputStringFunction(Function function) {
    return IsOf(function, STRING | INPUT_STRING);
}
bool PMMLTranslator::IsMixInputFunction(Function function) {
    return IsOf(function, LOGIC | MIX_INPUT);
}

} // namespace MCVeltrane_900
