#ifndef VELTRANE_PLUGINS_SCORECARD_SCORECARD_READER_H
#define VELTRANE_PLUGINS_SCORECARD_SCORECARD_READER_H

#include "kit/conditions/condition_reader.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "scorecard.h"

#include <cstdint>
#include <map>
#include <string>

namespace veltrane_scorecard {

/// Reads a Scorecard, each characteristic and attribute once, in the order of the document.
class ScorecardReader {
public:
    /// Both are borrowed.
    ScorecardReader(Scorecard& card, veltrane_kit::ModelParts& parts)
        : fCard(card), fParts(parts), fConditions(card.conditions, *parts.inputs) {}

    /// @param model the Scorecard
    /// @throws VTException 260285, 260153 for attributes; 260120 for a partial score, and for a reason code or a
    ///         baseline that neither level states although reasons are told; 260115 and 260272 for elements that are
    ///         absent or there twice, 260159 for those that have no place; what reading predicates and expressions
    ///         throws
    void Read(const veltrane_kit::Element& model);

private:
    void ReadAttributes(const veltrane_kit::Element& model);
    void ReadCharacteristic(const veltrane_kit::Element& element);
    void ReadAttribute(const veltrane_kit::Element& element, const veltrane_kit::Element& characteristic);
    std::int32_t ReadReason(const veltrane_kit::Element& attribute, const veltrane_kit::Element& characteristic);

    Scorecard& fCard;
    veltrane_kit::ModelParts& fParts;
    veltrane_kit::ConditionReader fConditions;
    bool fHasBaseline = false; ///< of the whole card
    double fBaseline = 0.0;
    std::map<std::string, std::int32_t> fReasons; ///< places in Scorecard::reasons
};

} // namespace veltrane_scorecard

#endif
