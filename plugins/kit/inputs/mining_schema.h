#ifndef VELTRANE_PLUGINS_KIT_MINING_SCHEMA_H
#define VELTRANE_PLUGINS_KIT_MINING_SCHEMA_H

#include "kit/document/element.h"
#include "kit/inputs/data_field.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

class Inputs;

/// What becomes of a case with a value that its field does not allow.
enum class InvalidTreatment {
    REFUSE,     ///< the case can't be scored
    AS_IS,      ///< the value counts as if it were allowed
    AS_MISSING, ///< the value counts as missing
    REPLACE     ///< another value stands in for it
};

/// What becomes of a number beyond the bounds of its field.
enum class OutlierTreatment { AS_IS, AS_MISSING, AS_EXTREME };

/// A MiningField: the part that a field plays in a model, and what is done with its values ahead of everything else.
struct MiningField {
    std::string name;
    MCVeltrane_900::ScoreModel::VarRole role = MCVeltrane_900::ScoreModel::ROLE_INPUT;
    OutlierTreatment outliers = OutlierTreatment::AS_IS;
    std::optional<double> low;
    std::optional<double> high;
    InvalidTreatment invalid = InvalidTreatment::REFUSE;
    bool statesInvalid = false;  ///< whether the document says so
    bool missingRefused = false; ///< a missing value can't be scored, though a replacement stands beside
    std::optional<std::string> missingReplacement;
    std::optional<std::string> invalidReplacement;                   ///< none unless invalid values are replaced
    std::optional<MCVeltrane_900::ScoreDictVar::MeasureLevel> level; ///< instead of the dictionary's
};

/// The MiningSchema of a model.
struct MiningSchema {
    std::vector<MiningField> fields;
    std::string target;                    ///< the name of the target field; empty for none
    std::vector<std::string> otherTargets; ///< of networks and neighbours, which may have several

    const MiningField* Find(const std::string& name) const;
};

/// Reads the only MiningSchema among a model's children. Both the older usage type "predicted" and the newer "target"
/// make a target; the attribute targetFieldName decides which of several is the first.
/// @param fields     of the data dictionary
/// @param dictionary the data dictionary as the library has it; an `optype` of a field is set there
/// @param outer      of the model that this one is a part of, whose fields may be named too; null for a whole model
/// @throws VTException 260115, 260272, 260120, 260285, 260153 for words and numbers, 260124 for a field that the
///         dictionary doesn't have, 260202 for one that comes twice, 260188 for outliers without bounds, 260273 for two
///         targets, 260211 for a continuous text
MiningSchema ReadMiningSchema(const Element& model, const DataFields& fields,
                              MCVeltrane_900::ScoreDictionary& dictionary, Inputs* outer = nullptr);

} // namespace veltrane_kit

#endif
