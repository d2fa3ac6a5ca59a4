// Any bytes as a document: they end in a catalogued failure or are read into a data dictionary and derived fields,
// which compute cases, can be copied and displayed, and are freed whole.
#include "documents.h"
#include "run.h"

#include <MCVeltrane_900/BaseDictionary.h>

#include <sstream>

using namespace veltrane::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    Dictionaries read;
    MayFail([&] { ReadDictionaries(InputOf(data, size), read); });
    if (read.derived != nullptr) {
        Compute(*read.derived, *read.fields);
    }
    if (read.fields != nullptr) {
        std::ostringstream text;
        read.fields->Display(text);
    }
    return 0;
}
