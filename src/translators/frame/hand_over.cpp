#include "translators/frame/hand_over.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>

namespace veltrane::translators {

void AddVar(MCVeltrane_900::BaseDictionary& dictionary, std::unique_ptr<MCVeltrane_900::ScoreDictVar> var) {
    const int size = dictionary.Size();
    dictionary.AddVar(var->GetName(), var.get());
    if (dictionary.Size() > size) {
        static_cast<void>(var.release());
    }
}

void AddRange(MCVeltrane_900::ScoreMissingValueSet& missing, std::unique_ptr<MCVeltrane_900::ScoreValueRange> range) {
    if (missing.Add(range.get())) {
        static_cast<void>(range.release());
    }
}

} // namespace veltrane::translators
