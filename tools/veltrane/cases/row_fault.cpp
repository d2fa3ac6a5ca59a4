#include "cases/row_fault.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <fmt/format.h>

#include <kit/inputs/unscored_reason.h>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ScoreModel;
using veltrane_kit::UnscoredReason;

constexpr const char* kNoPrediction = "the model gave no prediction";

const char* ReasonOf(UnscoredReason::Kind kind) {
    switch (kind) {
    case UnscoredReason::MISSING:
        return "is missing";
    case UnscoredReason::INVALID:
        return "is invalid";
    case UnscoredReason::DERIVED:
        return "is missing, a derived field whose inputs are there";
    default:
        return kNoPrediction;
    }
}

RowFault Untold(const MCScore::MCStatus& status) {
    if (!status.IsError()) {
        return {nullptr, {}, kNoPrediction};
    }
    if (status.GetErrorCode() == ScoreModel::NO_PREDICTION) {
        return {nullptr, {}, fmt::format("{} (status {})", kNoPrediction, ScoreModel::NO_PREDICTION)};
    }
    return {nullptr, {}, fmt::format("status {}", status.GetErrorCode())};
}

bool IsPlace(long place, std::size_t count) {
    return place >= 0 && static_cast<std::size_t>(place) < count;
}

/// A field that no cell holds is told by its name.
RowFault FaultOf(const std::string& name, const CaseRow& row, const char* reason) {
    for (const CaseRow::Field& field : row.Fields()) {
        if (field.name == name) {
            return {&field, name, reason};
        }
    }
    return {nullptr, name, reason};
}

} // namespace

RowFault ExplainUnscored(const MCScore::MCStatus& status, const ScoreModel& model, const CaseRow& row) {
    const UnscoredReason reason = UnscoredReason::ReadFrom(status);
    const auto place = static_cast<std::size_t>(reason.place);
    switch (reason.kind) {
    case UnscoredReason::NOT_TOLD:
        return Untold(status);
    case UnscoredReason::MISSING:
    case UnscoredReason::INVALID:
        if (const std::vector<std::string> names = model.GetDictionary()->GetVarNames();
            IsPlace(reason.place, names.size())) {
            return FaultOf(names[place], row, ReasonOf(reason.kind));
        }
        break;
    case UnscoredReason::DERIVED:
        if (const auto* derived = model.GetTransformationDictionary()) {
            const std::vector<std::string> names = derived->GetDerivedVarNames();
            if (IsPlace(reason.place, names.size())) {
                return {nullptr, names[place], ReasonOf(reason.kind)};
            }
        }
        break;
    default:
        break;
    }
    return {nullptr, {}, kNoPrediction};
}

} // namespace veltrane::host
