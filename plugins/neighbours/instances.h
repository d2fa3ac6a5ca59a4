#ifndef VELTRANE_PLUGINS_NEIGHBOURS_INSTANCES_H
#define VELTRANE_PLUGINS_NEIGHBOURS_INSTANCES_H

#include "clustering/comparison_reader.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane_neighbours {

/// What a target has in the training instances.
struct TargetColumn {
    std::shared_ptr<veltrane_kit::Target> owned; ///< of a further target
    veltrane_kit::Target* target = nullptr;
    bool isCategory = false;
    std::vector<double> numbers;     ///< of each instance; not a number for none
    std::vector<int> codes;          ///< of categories; Prediction::kNoCategory for none
    std::vector<std::size_t> counts; ///< of each category, how many instances have it
};

/// The training instances of a model, in the order of the document.
struct Instances {
    std::vector<double> points; ///< of each instance a number for each input
    std::vector<TargetColumn> targets;
    std::vector<std::string> ids;

    std::size_t Size() const { return ids.size(); }
};

/// Reads TrainingInstances. The inputs are known before.
class InstanceReader {
public:
    /// @param model      the model's element
    /// @param comparison has the fields of the inputs; borrowed
    /// @param parts      borrowed
    InstanceReader(const veltrane_kit::Element& model, veltrane_clustering::ComparisonReader& comparison,
                   veltrane_kit::ModelParts& parts);
    ~InstanceReader();

    /// @throws VTException 260115 for what lacks, 260203 for a field or an id that comes twice, 260246 and 260252 for
    ///         numbers of fields and rows that aren't those that are there, 260116 for an input, a target or an
    ///         identifier that no instance field has, 260153 for a column that no row has, 260156 for a cell that is no
    ///         value of its field, 260302 for a table that stands elsewhere
    Instances Read();

private:
    /// An InstanceField, by whom its cells are asked for.
    struct Column {
        std::string field;
        std::string cell; ///< what its cells are called
        veltrane_kit::Element element;
        int input = kNone;  ///< place among the inputs
        int target = kNone; ///< place among the targets
        int source = kNone; ///< place among what inputs are derived from
        bool isMet = false;
    };
    static constexpr int kNone = -1;
    class Derivation;

    void ReadFields(const veltrane_kit::Element& element);
    void FindTargets();
    void FindInputs(const veltrane_kit::Element& element);
    void FindIds();
    std::size_t PlaceOf(const std::string& field) const;
    Column& Require(const std::string& field);
    void ReadRows(const veltrane_kit::Element& table);
    void ReadRow(const veltrane_kit::Element& row);
    std::size_t ColumnOf(std::size_t place, const XMLCh* tag);
    void ReadCell(std::size_t column, const std::string& text);
    void ReadTarget(TargetColumn& target, const std::string& text, const std::string& cell);
    void CheckCount(const veltrane_kit::Element& element, const XMLCh* attribute, std::size_t count,
                    const char* of) const;
    void CheckColumns() const;
    void CountCategories();
    void CheckIds() const;

    veltrane_kit::Element fModel;
    veltrane_clustering::ComparisonReader& fComparison;
    veltrane_kit::ModelParts& fParts;
    Instances fInstances;
    std::vector<Column> fColumns;
    std::unordered_map<std::string, std::size_t> fByField; ///< the columns by their fields
    std::unordered_map<std::string, std::size_t> fPlaces;  ///< and by the names of their cells
    std::size_t fIdColumn;
    std::vector<std::pair<const XMLCh*, std::size_t>> fKnown; ///< columns of the row before, by place of a cell
    std::vector<std::size_t> fFilled;                         ///< of each column, in which row it was met last
    std::unique_ptr<Derivation> fDerivation;
};

} // namespace veltrane_neighbours

#endif
