// Any bytes as a document: they end in a catalogued failure or are read, and what was read computes a case, can be
// copied and displayed, and is freed whole.
#include <veltrane.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

using namespace MCVeltrane_900;

namespace {

const char* const kEncodings[] = {"UTF-8", "", "ISO-8859-1", "UTF-16", "no-such-encoding"};

void FillRecord(const ScoreDictionary& fields, CaseRecord& record) {
    for (const ScoreDictVar* field : fields.GetScoreDictVars()) {
        switch (field->GetVarType()) {
        case ScoreDictVar::kNUMERIC_VAR:
            record.Add(field->GetName(), new NumericValue(1.5));
            break;
        case ScoreDictVar::DATETIME_VAR:
            record.Add(field->GetName(), new DateTimeValue(86400.0, field->GetDateTimeType()));
            break;
        default:
            record.Add(field->GetName(), new StringValue("red"));
        }
    }
}

void Compute(TransformationDictionary& derived, const ScoreDictionary& fields) {
    CaseRecord record;
    FillRecord(fields, record);
    for (int round = 0; round < 3; ++round) {
        derived.GetValuesForDerivedVars(&record, &fields);
    }
    std::ostringstream text;
    derived.Display(text);
    const TransformationDictionary copy(derived);
    copy.Display(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool started = (ModelFactory::Initialize(""), true);
    if (size == 0 || !started) {
        return 0;
    }
    const char* encoding = kEncodings[data[0] % std::size(kEncodings)];
    // A document of the samples starts with '<' and keeps all its bytes.
    const std::size_t skip = data[0] == '<' ? 0 : 1;
    std::istringstream in(std::string(reinterpret_cast<const char*>(data) + skip, size - skip));
    ScoreDictionary* fields = nullptr;
    try {
        std::unique_ptr<TransformationDictionary> derived(
            ModelFactory::GetTransformationDictionaryFromXML(in, fields, encoding));
        if (derived != nullptr) {
            Compute(*derived, *fields);
        }
    } catch (const VTException& failure) {
        if (failure.GetErrorMessage().empty()) {
            __builtin_trap();
        }
    }
    delete fields;
    return 0;
}
