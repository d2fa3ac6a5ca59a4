#include "kit/functions/logic.h"

#include "kit/values/values.h"

#include <algorithm>

namespace veltrane_kit::standard {

namespace {

bool IsThere(const Value& value) {
    return !value.isMissing && !value.isInvalid;
}

int OrderOf(const FunctionCall& call) {
    return Order(call.arguments[0], call.arguments[1]);
}

bool IsAmongOthers(const FunctionCall& call) {
    return std::any_of(call.arguments + 1, call.arguments + call.count, [&call](const Value& member) {
        return !member.isMissing && AreEqual(call.arguments[0], member);
    });
}

/// What all arguments come to when one truth value decides for all of them.
Value Decided(const FunctionCall& call, bool deciding) {
    bool isDecided = false;
    bool isUnknown = false;
    for (std::size_t i = 0; i < call.count; ++i) {
        bool isTruth = false;
        const std::optional<bool> truth = TruthOfValue(call.arguments[i], isTruth);
        if (!isTruth) {
            return MakeMissing(DataType::BOOLEAN);
        }
        isDecided = isDecided || truth == deciding;
        isUnknown = isUnknown || !truth;
    }
    return isUnknown && !isDecided ? MakeMissing(DataType::BOOLEAN) : MakeTruth(isDecided == deciding);
}

} // namespace

Value IsMissing(FunctionCall& call) {
    return MakeTruth(call.arguments[0].isMissing);
}

Value IsNotMissing(FunctionCall& call) {
    return MakeTruth(!call.arguments[0].isMissing);
}

Value IsValid(FunctionCall& call) {
    return MakeTruth(IsThere(call.arguments[0]));
}

Value IsNotValid(FunctionCall& call) {
    return MakeTruth(!IsThere(call.arguments[0]));
}

Value Equal(FunctionCall& call) {
    return MakeTruth(OrderOf(call) == 0);
}

Value NotEqual(FunctionCall& call) {
    return MakeTruth(OrderOf(call) != 0);
}

Value LessThan(FunctionCall& call) {
    return MakeTruth(OrderOf(call) < 0);
}

Value LessOrEqual(FunctionCall& call) {
    return MakeTruth(OrderOf(call) <= 0);
}

Value GreaterThan(FunctionCall& call) {
    return MakeTruth(OrderOf(call) > 0);
}

Value GreaterOrEqual(FunctionCall& call) {
    return MakeTruth(OrderOf(call) >= 0);
}

Value IsIn(FunctionCall& call) {
    return call.arguments[0].isMissing ? MakeMissing(DataType::BOOLEAN) : MakeTruth(IsAmongOthers(call));
}

Value IsNotIn(FunctionCall& call) {
    return call.arguments[0].isMissing ? MakeMissing(DataType::BOOLEAN) : MakeTruth(!IsAmongOthers(call));
}

Value And(FunctionCall& call) {
    return Decided(call, false);
}

Value Or(FunctionCall& call) {
    return Decided(call, true);
}

Value Not(FunctionCall& call) {
    bool isTruth = false;
    const std::optional<bool> truth = TruthOfValue(call.arguments[0], isTruth);
    return truth ? MakeTruth(!*truth) : MakeMissing(DataType::BOOLEAN);
}

Value If(FunctionCall& call) {
    bool isTruth = false;
    const std::optional<bool> condition = TruthOfValue(call.arguments[0], isTruth);
    if (!condition || (!*condition && call.count < 3)) {
        return {};
    }
    return call.arguments[*condition ? 1 : 2];
}

} // namespace veltrane_kit::standard
