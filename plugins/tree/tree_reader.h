#ifndef VELTRANE_PLUGINS_TREE_TREE_READER_H
#define VELTRANE_PLUGINS_TREE_TREE_READER_H

#include "kit/conditions/condition_reader.h"
#include "kit/document/element.h"
#include "kit/document/known_texts.h"
#include "kit/model/model_plan.h"
#include "leaf_models.h"
#include "tree.h"

#include <cstdint>
#include <vector>

namespace veltrane_tree {

/// Reads the nodes of a TreeModel, each once, in the order of the document.
class TreeReader {
public:
    /// What a tree has to tell for the way in which it treats missing values.
    struct Needs {
        bool recordCounts = false; ///< of all nodes but the root
    };

    /// All are borrowed.
    TreeReader(Tree& tree, LeafModels& models, veltrane_kit::ModelParts& parts, Needs needs)
        : fTree(tree), fModels(models), fParts(parts), fConditions(tree.conditions, *parts.inputs), fNeeds(needs) {}

    /// Nodes nest at most as deep as the factory lets a document nest.
    /// @param root the only Node of a TreeModel
    /// @throws VTException what reading a predicate throws; 260115 for a node without one, 260272 for two of them;
    ///         260120, 260285, 260153 for attributes; 260203 for a category with two distributions; 260159 for an
    ///         element that has no place in a node
    void Read(const veltrane_kit::Element& root);

private:
    /// What a child of a node may be. UNKNOWN is a name that wasn't looked at.
    enum class Kind : std::uint8_t { UNKNOWN, NODE, SHARE, PREDICATE, MODEL, PASSED, MISPLACED };

    /// What is among the children of a node.
    struct Parts {
        veltrane_kit::Element predicate;
        veltrane_kit::Element model; ///< that predicts for the node
        int nodes = 0;
        int shares = 0;
    };

    static Kind LookUpKind(const veltrane_kit::Element& child);
    Kind KindOf(const veltrane_kit::Element& child);
    Parts Survey(const veltrane_kit::Element& element);
    void ReadNode(const veltrane_kit::Element& element, std::size_t index);
    NodeScore ReadScore(const veltrane_kit::Element& element);
    int CategoryOf(const veltrane_kit::Element& element, const XMLCh* attribute);
    void ReadId(const veltrane_kit::Element& element, NodeScore& score);
    void ReadShares(const veltrane_kit::Element& element, int count, NodeScore& score);
    void ReadShare(const veltrane_kit::Element& element);
    void CompleteProbabilities(const NodeScore& score);
    std::int32_t WinnerOf(const NodeScore& score) const;
    void ReadChildren(const veltrane_kit::Element& element, std::size_t index, int count);
    void RequireRecordCount(const veltrane_kit::Element& element, NodeScore& score) const;

    Tree& fTree;
    LeafModels& fModels;
    veltrane_kit::ModelParts& fParts;
    veltrane_kit::ConditionReader fConditions;
    Needs fNeeds;
    std::int32_t fPlace = 0;
    std::vector<Kind> fKinds; ///< by the tags of records
    veltrane_kit::KnownTexts<int, 16> fCategories;
    bool fKeepsDigits = false;           ///< whether digits are ASCII in the encoding of the document's texts
    std::vector<std::int32_t> fSharedAt; ///< by category, the place of the last node with a share of it; 0 for none
};

} // namespace veltrane_tree

#endif
