// Any bytes as a document: they end in a catalogued failure or are read, and what was read computes a case, can be
// copied and displayed, and is freed whole. The same holds for the conditions in it.
#include "conditions.h"

#include <veltrane.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

using namespace MCVeltrane_900;

namespace {

const char* const kEncodings[] = {"UTF-8", "", "ISO-8859-1", "UTF-16", "no-such-encoding"};

void Compute(TransformationDictionary& derived, const ScoreDictionary& fields) {
    CaseRecord record;
    veltrane::fuzz::FillRecord(fields, record);
    for (int round = 0; round < 3; ++round) {
        derived.GetValuesForDerivedVars(&record, &fields);
    }
    std::ostringstream text;
    derived.Display(text);
    const TransformationDictionary copy(derived);
    copy.Display(text);
}

void ExpectMessage(const VTException& failure) {
    if (failure.GetErrorMessage().empty()) {
        __builtin_trap();
    }
}

/// @return whether the document itself is one that the library reads: the factory's bounds hold for it
bool ReadDerivedFields(const std::string& document, const char* encoding) {
    std::istringstream in(document);
    ScoreDictionary* fields = nullptr;
    try {
        const std::unique_ptr<TransformationDictionary> derived(
            ModelFactory::GetTransformationDictionaryFromXML(in, fields, encoding));
        if (derived != nullptr) {
            Compute(*derived, *fields);
        }
    } catch (const VTException& failure) {
        ExpectMessage(failure);
    }
    const std::unique_ptr<ScoreDictionary> owner(fields);
    return owner != nullptr;
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
    const std::string document(reinterpret_cast<const char*>(data) + skip, size - skip);
    if (ReadDerivedFields(document, encoding)) {
        const bool withEncoders = size % 2 == 0;
        try {
            veltrane::fuzz::ReadConditions(document, encoding, withEncoders);
        } catch (const VTException& failure) {
            ExpectMessage(failure);
        }
    }
    return 0;
}
