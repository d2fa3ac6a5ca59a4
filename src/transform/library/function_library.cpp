#include "diagnostics/raise.h"

#include <veltrane/functions.h>

#include <string>
#include <unordered_map>
#include <utility>

namespace veltrane {

namespace {

using diagnostics::Message;

[[noreturn]] void Refuse(std::string_view value, std::string_view field, std::string_view name) {
    diagnostics::Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(value, field, name);
}

std::string TextOfCount(std::size_t count) {
    return count == Function::kAny ? "any" : std::to_string(count);
}

void CheckEvaluation(const Function& function) {
    const int ways = (function.ofOne != nullptr ? 1 : 0) + (function.ofTwo != nullptr ? 1 : 0) +
                     (function.ofMany != nullptr ? 1 : 0) + (function.ofValues != nullptr ? 1 : 0);
    if (ways != 1) {
        Refuse(std::to_string(ways), "ofOne, ofTwo, ofMany, ofValues", function.name);
    }
    if (function.ofValues != nullptr && function.ofColumns != nullptr) {
        Refuse("ofValues", "ofColumns", function.name);
    }
}

/// A function of values may take none at all; a kernel over one or two numbers takes just so many.
void CheckCounts(const Function& function) {
    const std::size_t wanted = function.ofOne != nullptr ? 1 : function.ofTwo != nullptr ? 2 : 0;
    if (wanted != 0 && function.fewest != wanted) {
        Refuse(TextOfCount(function.fewest), "fewest", function.name);
    }
    if (function.most < function.fewest || (wanted != 0 && function.most != wanted)) {
        Refuse(TextOfCount(function.most), "most", function.name);
    }
    if (function.fewest == Function::kAny) {
        Refuse(TextOfCount(function.fewest), "fewest", function.name);
    }
}

/// A kernel gets numbers that are there, and one over one or two numbers gets them all.
void CheckMissing(const Function& function) {
    if (function.missing == Function::Missing::IS_PASSED && function.ofValues == nullptr) {
        Refuse("IS_PASSED", "missing", function.name);
    }
    if (function.missing == Function::Missing::IS_SKIPPED && (function.ofOne != nullptr || function.ofTwo != nullptr)) {
        Refuse("IS_SKIPPED", "missing", function.name);
    }
}

} // namespace

/// The names are those of the functions themselves, which stay where they are.
struct FunctionLibrary::Index {
    std::unordered_map<std::string_view, const Function*> byName;
};

FunctionLibrary::FunctionLibrary() : fIndex(std::make_unique<Index>()) {}

FunctionLibrary::~FunctionLibrary() = default;

int FunctionLibrary::Add(Function function) {
    if (function.name.empty()) {
        Refuse(function.name, "name", "Function");
    }
    CheckEvaluation(function);
    CheckCounts(function);
    CheckMissing(function);
    if (Find(function.name) != nullptr) {
        diagnostics::Raise<Message::DUPLICATE_VARIABLE_IN>(function.name, "FunctionLibrary");
    }
    function.number = kFirstNumber + static_cast<int>(fFunctions.size());
    const Function& added = fFunctions.emplace_back(std::move(function));
    fIndex->byName.emplace(added.name, &added);
    return added.number;
}

const Function* FunctionLibrary::Find(std::string_view name) const {
    const auto found = fIndex->byName.find(name);
    return found == fIndex->byName.end() ? nullptr : found->second;
}

const Function* FunctionLibrary::Find(int number) const {
    const auto place = static_cast<std::size_t>(number - kFirstNumber);
    return number >= kFirstNumber && place < fFunctions.size() ? &fFunctions[place] : nullptr;
}

const std::deque<Function>& FunctionLibrary::All() const {
    return fFunctions;
}

/// It is never destroyed: documents may be scored while the process ends.
FunctionLibrary& FunctionLibrary::OfHost() {
    static auto* const library = new FunctionLibrary;
    return *library;
}

} // namespace veltrane
