#include "translators/dictionary/category_encoder.h"

#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <memory>

namespace veltrane::translators {

using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValueLabel;

namespace {

/// How many categories a new encoder reserves for.
constexpr int kReservedCategories = 2;

std::unique_ptr<MCVeltrane_900::ScoreEncoder> MakeEncoder(const ScoreDictVar& var) {
    if (var.GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        return std::make_unique<MCVeltrane_900::ScoreCatNumericEncoder>(kReservedCategories);
    }
    auto encoder = std::make_unique<MCVeltrane_900::ScoreCatStringEncoder>(kReservedCategories);
    encoder->SetEmptyStringOK(var.GetEmptyStringOK());
    encoder->SetNoSpaceTrim(var.GetNoSpaceTrim());
    return encoder;
}

bool IsCategorical(const ScoreDictVar& var) {
    return var.GetMLevel() == ScoreDictVar::LEVEL_NOMINAL || var.GetMLevel() == ScoreDictVar::LEVEL_ORDINAL;
}

} // namespace

bool SetupCategoryEncoder(ScoreDictVar* var) {
    if (!var || !IsCategorical(*var)) {
        return false;
    }
    if (!var->GetEncoder()) {
        var->SetEncoder(MakeEncoder(*var).release());
    }
    if (const MCVeltrane_900::ScoreValueLabelSet* labels = var->GetValueLabels()) {
        for (const ScoreValueLabel* label : labels->GetAllValueLabels()) {
            if (label->GetValue()) {
                var->GetEncoder()->Encode(label->GetValue());
            }
        }
    }
    return true;
}

} // namespace veltrane::translators
