#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/ScoreVarStats.h>
#include <MCVeltrane_900/ScoreVersionInfo.h>

// The interfaces have no source file of their own. Their destructors stand here, so that the library alone holds their
// virtual tables and type information and plug-ins share them.
namespace MCVeltrane_900 {

ScoreCaseRecord::~ScoreCaseRecord() = default;
ScoreDictVar::~ScoreDictVar() = default;
ScoreDictionary::~ScoreDictionary() = default;
ScoreEncoder::~ScoreEncoder() = default;
ScoreMissingValueSet::~ScoreMissingValueSet() = default;
ScoreResultField::~ScoreResultField() = default;
ScoreValueLabel::~ScoreValueLabel() = default;
ScoreValueLabelSet::~ScoreValueLabelSet() = default;
ScoreValueProbability::~ScoreValueProbability() = default;
ScoreValueProbabilitySet::~ScoreValueProbabilitySet() = default;
ScoreValueRange::~ScoreValueRange() = default;
ScoreVarStats::~ScoreVarStats() = default;
ScoreVersionInfo::~ScoreVersionInfo() = default;

ScoreValue::~ScoreValue() = default;

} // namespace MCVeltrane_900
