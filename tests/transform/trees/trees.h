#ifndef VELTRANE_TESTS_TRANSFORM_TREES_H
#define VELTRANE_TESTS_TRANSFORM_TREES_H

#include <MCVeltrane_900/FunctionTreeImp.h>

#include <memory>
#include <string>
#include <vector>

/// Function trees for tests.
namespace veltrane::tests {

using MCVeltrane_900::ApplyNodeStats;
using MCVeltrane_900::FunctionTree;
using MCVeltrane_900::FunctionTreeImp;
using MCVeltrane_900::TransformationDictionary;

inline ApplyNodeStats StatsWithId(const std::string& id) {
    ApplyNodeStats stats;
    stats.SetNodeID(id);
    return stats;
}

inline FunctionTreeImp* NewNode(const std::string& id, bool allowsChildren = true) {
    auto* node = new FunctionTreeImp(allowsChildren);
    node->SetNodeStats(StatsWithId(id));
    return node;
}

inline std::unique_ptr<FunctionTreeImp> Root(const std::string& id) {
    return std::unique_ptr<FunctionTreeImp>(NewNode(id));
}

inline FunctionTreeImp* AddNode(FunctionTreeImp* parent, const std::string& id) {
    FunctionTreeImp* node = NewNode(id);
    parent->Add(node);
    return node;
}

/// A node that writes its id down when it is deleted.
class MortalNode : public FunctionTreeImp {
public:
    MortalNode(const std::string& id, std::vector<std::string>& deaths) : fDeaths(deaths) {
        SetNodeStats(StatsWithId(id));
    }
    ~MortalNode() override { fDeaths.push_back(GetNodeStats().GetNodeID()); }

private:
    std::vector<std::string>& fDeaths;
};

/// The id of a node, "null" for none.
inline std::string IdOf(const FunctionTree* node) {
    return node == nullptr ? "null" : node->GetNodeStats().GetNodeID();
}

/// The ids of the slots.
inline std::vector<std::string> Slots(const FunctionTree& node) {
    std::vector<std::string> ids;
    for (int i = 0; i < node.GetChildCount(); ++i) {
        ids.push_back(IdOf(node.GetChildAt(i)));
    }
    return ids;
}

} // namespace veltrane::tests

#endif
