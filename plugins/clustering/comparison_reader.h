#ifndef VELTRANE_PLUGINS_CLUSTERING_COMPARISON_READER_H
#define VELTRANE_PLUGINS_CLUSTERING_COMPARISON_READER_H

#include "comparison.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrane_clustering {

/// Reads how a model compares points: its ComparisonMeasure, and the fields that are compared, each from an element of
/// its own with `fieldWeight`, `compareFunction`, `similarityScale` and Comparisons.
class ComparisonReader {
public:
    /// @param model the model's element
    /// @param parts borrowed
    /// @throws VTException 260115 and 260272 for the measure, 260153, 260120 and 260285 for its attributes, 260159 for
    ///         an element that has no place in it, 260179 for a measure of what is alike as a distance
    ComparisonReader(const veltrane_kit::Element& model, veltrane_kit::ModelParts& parts);

    /// Adds the field that an element names.
    /// @throws VTException 260120, 260285, 260125 and 260161 for the field, 260203 for one that comes twice, 260187 for
    ///         texts where numbers have to be, 260153 for a weight or a scale, 260120 for a lacking scale, 260115 for
    ///         lacking Comparisons, 260126 for a field that lists no values for them, 260251 for a matrix of another
    ///         size
    void AddField(const veltrane_kit::Element& element);

    /// The value of a field that the document writes for a center or an instance; not a number for one that the field's
    /// Comparisons don't have.
    /// @param element where the text stands, for the failure
    /// @throws VTException 260156 for a text that is no value of the field
    double ReadValue(std::size_t field, const std::string& text, const std::string& element);
    /// The same of a value that a case would have.
    double ValueOf(std::size_t field, const veltrane_kit::Value& value);

    /// The values that a field lists, in their order; none where it lists none.
    std::vector<veltrane_kit::Value> ListedOf(const ComparedField& field) const;

    /// All fields are there.
    Comparison Take();
    Comparison& Get() { return fComparison; }

private:
    void ReadMeasure(const veltrane_kit::Element& element);
    void ReadParameters(const veltrane_kit::Element& measure);
    void ReadTable(const veltrane_kit::Element& element, ComparedField& field);
    void ReadFunction(const veltrane_kit::Element& element, ComparedField& field);

    veltrane_kit::ModelParts& fParts;
    Comparison fComparison;
    CompareFunction fFunction = CompareFunction::ABS_DIFF;
    std::string fModel;
};

/// A weight, which is 1 where the element has none.
/// @throws VTException 260153 for one below 0
double ReadWeight(const veltrane_kit::Element& element);

} // namespace veltrane_clustering

#endif
