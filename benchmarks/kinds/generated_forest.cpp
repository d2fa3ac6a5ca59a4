#include "generated_forest.h"

#include <cstdio>

namespace veltrane::bench {

namespace {

constexpr int kFullLevels = 8;
constexpr int kFullLevelsOfDeep = 6;

std::string Text(double number) {
    char text[40];
    std::snprintf(text, sizeof(text), "%.17g", number);
    return text;
}

} // namespace

GeneratedForest::GeneratedForest(int trees, int depth) {
    fDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\"><Header/><DataDictionary>\n"
                "<DataField name=\"y\" optype=\"continuous\" dataType=\"double\"/>\n";
    std::string schema = "<MiningSchema><MiningField name=\"y\" usageType=\"target\"/>";
    for (std::size_t i = 0; i < kFields; ++i) {
        const std::string name = "\"x" + std::to_string(i) + "\"";
        fDocument += "<DataField name=" + name + " optype=\"continuous\" dataType=\"double\"/>\n";
        schema += "<MiningField name=" + name + "/>";
    }
    schema += "</MiningSchema>";
    fDocument += "</DataDictionary><MiningModel functionName=\"regression\">" + schema +
                 "<Segmentation multipleModelMethod=\"sum\">\n";
    for (int i = 0; i < trees; ++i) {
        std::vector<Node>& tree = fTrees.emplace_back(1);
        Grow(tree, 0, 0, depth);
        fDocument += "<Segment><True/><TreeModel functionName=\"regression\" splitCharacteristic=\"binarySplit\">" +
                     schema + "\n";
        Write(tree, 0, "<True/>");
        fDocument += "</TreeModel></Segment>\n";
    }
    fDocument += "</Segmentation></MiningModel></PMML>\n";
}

/// From 0 to 1, the same on every machine.
double GeneratedForest::Next() {
    fSeed = fSeed * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(fSeed >> 11U) * 0x1p-53;
}

void GeneratedForest::Grow(std::vector<Node>& tree, std::size_t at, int level, int depth) {
    const int full = depth > kFullLevels ? kFullLevelsOfDeep : depth;
    // One way goes down to the last level.
    const bool goesOn = level < full || at == 0 || Next() < 0.6;
    if (level == depth || !goesOn) {
        tree[at].number = Next() * 100.0 - 50.0;
        return;
    }
    const std::size_t left = tree.size();
    tree.resize(left + 2);
    tree[at] = {static_cast<std::int32_t>(Next() * kFields), static_cast<std::int32_t>(left), 0.1 + 0.8 * Next()};
    Grow(tree, left, level + 1, depth);
    Grow(tree, left + 1, level + 1, depth);
}

void GeneratedForest::Write(const std::vector<Node>& tree, std::size_t at, const std::string& condition) {
    const Node& node = tree[at];
    const bool isLeaf = node.field == Node::kLeaf;
    fDocument += "<Node id=\"" + std::to_string(at + 1) + "\"" +
                 (isLeaf ? " score=\"" + Text(node.number) + "\"" : "") + ">" + condition;
    if (!isLeaf) {
        const auto left = static_cast<std::size_t>(node.left);
        const std::string test = "<SimplePredicate field=\"x" + std::to_string(node.field) + "\" operator=\"";
        const std::string value = "\" value=\"" + Text(node.number) + "\"/>";
        Write(tree, left, test + "lessOrEqual" + value);
        Write(tree, left + 1, test + "greaterThan" + value);
    }
    fDocument += "</Node>\n";
}

std::size_t GeneratedForest::Nodes() const {
    std::size_t nodes = 0;
    for (const std::vector<Node>& tree : fTrees) {
        nodes += tree.size();
    }
    return nodes;
}

double GeneratedForest::ByHand(const double* fields) const {
    double sum = 0.0;
    for (const std::vector<Node>& tree : fTrees) {
        const Node* node = tree.data();
        while (node->field != Node::kLeaf) {
            node = tree.data() + node->left + (fields[node->field] <= node->number ? 0 : 1);
        }
        sum += node->number;
    }
    return sum;
}

} // namespace veltrane::bench
