#ifndef VELTRANE_PLUGINS_MINING_SEGMENTATION_READER_H
#define VELTRANE_PLUGINS_MINING_SEGMENTATION_READER_H

#include "kit/conditions/condition_reader.h"
#include "kit/document/element.h"
#include "kit/model/completion.h"
#include "segmentation.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace veltrane_mining {

/// Reads the Segmentation of a MiningModel, with all models in it.
class SegmentationReader {
public:
    /// All are borrowed.
    SegmentationReader(Segmentation& segmentation, veltrane_kit::ModelParts& parts)
        : fSegmentation(segmentation), fParts(parts), fConditions(segmentation.conditions, *parts.inputs) {}

    /// @param model the MiningModel
    /// @throws VTException 260120, 260285, 260153 for attributes; 260179 for a method that the model's function doesn't
    ///         have; 260283 for a Segmentation without a Segment; 260203 for two segments with an id; 260115 for a
    ///         segment without a predicate or a model, 260272 for two; 260301 for a model of an unknown kind; 260214
    ///         for one whose function or target isn't that of the whole, 260127 for one with a category that the target
    ///         doesn't have; 260302 for models that lie too deep in one another; and what reading models and predicates
    ///         throws
    void Read(const veltrane_kit::Element& model);

private:
    /// What is among the children of a segment.
    struct Children {
        veltrane_kit::Element predicate;
        veltrane_kit::Element model;
    };

    void ReadEmbedded(const veltrane_kit::Element& model);
    void ReadSegments(const veltrane_kit::Element& element);
    void ReadMethod(const veltrane_kit::Element& element);
    void NoteAsked(const veltrane_kit::Element& model);
    void CheckAsked() const;
    void ReadSegment(const veltrane_kit::Element& element);
    static Children Survey(const veltrane_kit::Element& element);
    double ReadWeight(const veltrane_kit::Element& element) const;
    bool IsInModelList(const veltrane_kit::Element& model) const;
    void ReadModel(const veltrane_kit::Element& model, Segment& segment);
    void FindCategories(const veltrane_kit::Element& model, Segment& segment);
    void Tell(Segment& segment);
    bool HasOtherTarget(const Segment& segment) const;
    [[noreturn]] void RaiseContradiction(const Segment& segment) const;
    void CheckFunctions() const;

    Segmentation& fSegmentation;
    veltrane_kit::ModelParts& fParts;
    veltrane_kit::ConditionReader fConditions;
    std::map<std::string, std::vector<veltrane_kit::Element>> fAsked; ///< output fields by the id that they name
    std::set<std::string> fIds;
};

} // namespace veltrane_mining

#endif
