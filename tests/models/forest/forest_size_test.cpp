// The memory of a forest when it is built and all else is gone.
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"

#include <gtest/gtest.h>

#include <malloc.h>

using namespace veltrane::tests;

#ifndef VELTRANE_SANITIZED
namespace {

constexpr int kFields = 20;
constexpr int kTrees = 50;
constexpr int kDepth = 9;
constexpr std::size_t kNodes = (std::size_t{2} << kDepth) - 1;

std::string NameOf(int field) {
    return "x" + std::to_string(field);
}

/// The nodes below another one, each with a bound of its own.
std::string NodesBelow(int depth, int& place) {
    if (depth == 0) {
        return "";
    }
    std::string nodes;
    const std::string split = "<SimplePredicate field='" + NameOf(place % kFields) + "' operator='";
    const std::string bound = "' value='" + std::to_string(place * 0.37) + "'/>";
    for (const char* side : {"lessOrEqual", "greaterThan"}) {
        ++place;
        nodes += "<Node id='" + std::to_string(place) + "' score='" + std::to_string(place * 0.11) + "' recordCount='" +
                 std::to_string(place) + "'>";
        nodes += split + side + bound;
        nodes += NodesBelow(depth - 1, place) + "</Node>";
    }
    return nodes;
}

std::string ForestDocument() {
    std::string fields = "<DataField name='y' optype='continuous' dataType='double'/>";
    std::string schema = "<MiningSchema><MiningField name='y' usageType='target'/>";
    for (int field = 0; field < kFields; ++field) {
        fields += "<DataField name='" + NameOf(field) + "' optype='continuous' dataType='double'/>";
        schema += "<MiningField name='" + NameOf(field) + "'/>";
    }
    schema += "</MiningSchema>";
    std::string segments;
    int place = 0;
    for (int tree = 0; tree < kTrees; ++tree) {
        segments += SegmentOf("<TreeModel functionName='regression' splitCharacteristic='binarySplit'>" + schema +
                              "<Node id='0' score='0'><True/>" + NodesBelow(kDepth, place) + "</Node></TreeModel>");
    }
    return "<PMML version='4.4'><DataDictionary>" + fields +
           "</DataDictionary><MiningModel functionName='regression'>" + schema +
           "<Segmentation multipleModelMethod='average'>" + segments + "</Segmentation></MiningModel></PMML>";
}

std::size_t BytesInUse() {
    return ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
}

TEST(ForestSizeOwnProcess, IsSixtyBytesForANodeAtMost) {
    const std::string document = ForestDocument();
    ReadModel(document); // what the first model of a process makes for all others
    const std::size_t before = BytesInUse();
    const auto model = ReadModel(document);
    EXPECT_LE(BytesInUse() - before, kNodes * 60 * kTrees);
}

} // namespace
#endif
