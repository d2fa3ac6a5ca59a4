#include "documents.h"

#include <veltrane.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <limits>
#include <sstream>

using namespace MCVeltrane_900;

namespace veltrane::fuzz {

namespace {

constexpr const char* kEncodings[] = {"UTF-8", "", "ISO-8859-1", "UTF-16", "no-such-encoding"};
constexpr int kCases = 3;
constexpr double kNumbers[] = {1.5, -3.0, std::numeric_limits<double>::quiet_NaN()};
constexpr const char* kTexts[] = {"red", "", "2001-01-01"};

} // namespace

Input InputOf(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return {kEncodings[0], {}};
    }
    const std::size_t skip = data[0] == '<' ? 0 : 1;
    return {skip == 0 ? kEncodings[0] : kEncodings[data[0] % std::size(kEncodings)],
            std::string(reinterpret_cast<const char*>(data) + skip, size - skip)};
}

void WithTree(const std::string& document, const std::function<void(xercesc::DOMDocument&)>& use) {
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(ModelFactory::MAX_ENTITY_EXPANSIONS);
    xercesc::XercesDOMParser parser;
    parser.setSecurityManager(&security);
    parser.setLoadExternalDTD(false);
    parser.setDisableDefaultEntityResolution(true);
    try {
        parser.parse(
            xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document"));
    } catch (...) {
        return;
    }
    if (parser.getErrorCount() == 0 && parser.getDocument() != nullptr &&
        parser.getDocument()->getDocumentElement() != nullptr) {
        use(*parser.getDocument());
    }
}

void FillRecord(const ScoreDictionary& fields, CaseRecord& record, int number) {
    auto kind = static_cast<std::size_t>(number);
    for (const ScoreDictVar* field : fields.GetScoreDictVars()) {
        switch (field->GetVarType()) {
        case ScoreDictVar::kNUMERIC_VAR:
            record.Add(field->GetName(), new NumericValue(kNumbers[kind % std::size(kNumbers)]));
            break;
        case ScoreDictVar::DATETIME_VAR:
            record.Add(field->GetName(), new DateTimeValue(86400.0, field->GetDateTimeType()));
            break;
        default:
            record.Add(field->GetName(), new StringValue(kTexts[kind % std::size(kTexts)]));
        }
        ++kind;
    }
}

void ReadDictionaries(const Input& input, Dictionaries& dictionaries) {
    std::istringstream in(input.document);
    ScoreDictionary* fields = nullptr;
    try {
        dictionaries.derived.reset(ModelFactory::GetTransformationDictionaryFromXML(in, fields, input.encoding));
    } catch (const VTException&) {
        dictionaries.fields.reset(fields);
        throw;
    }
    dictionaries.fields.reset(fields);
}

void Compute(TransformationDictionary& derived, const ScoreDictionary& fields) {
    std::ostringstream text;
    derived.Display(text);
    TransformationDictionary copy(derived);
    for (int number = 0; number < kCases; ++number) {
        CaseRecord record;
        FillRecord(fields, record, number);
        derived.GetValuesForDerivedVars(&record, &fields);
        copy.GetValuesForDerivedVars(&record, &fields);
    }
    copy.Display(text);
}

} // namespace veltrane::fuzz
