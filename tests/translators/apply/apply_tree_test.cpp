#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/apply/apply_reading.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTreeImp.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veltrane::tests {
namespace {

using Texts = std::vector<std::string>;

class ApplyTree : public ApplyReading {
protected:
    const ApplyNodeStats& Root(const std::string& apply) { return Tree(apply).GetNodeStats(); }

    /// The stats of the only argument of a function.
    const ApplyNodeStats& Only(const std::string& function, const std::string& argument) {
        const FunctionTree& tree = Tree("<Apply function='" + function + "'>" + argument + "</Apply>");
        EXPECT_EQ(tree.GetChildCount(), 1);
        return tree.GetChildAt(0)->GetNodeStats();
    }

    /// Nodes in document order, each as "id:what".
    static Texts Nodes(const FunctionTree& tree) {
        Texts nodes;
        const std::function<void(const FunctionTree&)> visit = [&](const FunctionTree& node) {
            const ApplyNodeStats& stats = node.GetNodeStats();
            const std::string what = stats.IsConstNode()                 ? ToText(stats.GetValue())
                                     : !stats.GetParameterName().empty() ? stats.GetParameterName()
                                                                         : T::ToString(stats.GetTransformFunction());
            nodes.push_back(stats.GetNodeID() + ":" + what);
            for (int i = 0; i < node.GetChildCount(); ++i) {
                visit(*node.GetChildAt(i));
            }
        };
        visit(tree);
        return nodes;
    }

    using T = PMMLTranslator;
};

TEST_F(ApplyTree, NodeIdsRunInDocumentOrder) {
    EXPECT_EQ(Nodes(Tree("<Apply function='+'><Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply>"
                         "<Note/><Apply function='abs'><Apply function='ln'><FieldRef field='y'/></Apply></Apply>"
                         "</Apply>")),
              Texts({"0:+", "1:*", "2:x", "3:2", "4:abs", "5:ln", "6:y"}));
}

TEST_F(ApplyTree, NodeIdsRunOnFromTreeToTree) {
    Tree("<Apply function='+'><FieldRef field='x'/><FieldRef field='x'/></Apply>");
    EXPECT_EQ(Nodes(Tree("<Apply function='abs'><Constant>1</Constant></Apply>")), Texts({"3:abs", "4:1"}));
    EXPECT_EQ(translator.fNodeCounter, 5);
}

TEST_F(ApplyTree, NodeIdsStartAnewWithEveryTransformationDictionary) {
    const std::string field = NumericField("<Apply function='abs'><FieldRef field='x'/></Apply>");
    const ParsedXml xml = ParseXml("<TransformationDictionary>" + field + "</TransformationDictionary>");
    for (int run = 0; run < 2; ++run) {
        const std::unique_ptr<TransformationDictionary> derived(
            translator.HandleTransformationDictionary(xml.Root(), dictionary.get()));
        EXPECT_EQ(translator.fNodeCounter, 2);
    }
}

TEST_F(ApplyTree, InteriorNodesTakeChildrenAndLeavesDoNot) {
    const FunctionTree& tree = Tree("<Apply function='+'><FieldRef field='x'/><Constant>1</Constant></Apply>");
    EXPECT_TRUE(tree.GetAllowsChildren());
    EXPECT_FALSE(tree.GetChildAt(0)->GetAllowsChildren());
    EXPECT_FALSE(tree.GetChildAt(1)->GetAllowsChildren());
    EXPECT_EQ(tree.GetChildAt(0)->GetNodeStats().GetTransformFunction(), 79);
    EXPECT_EQ(tree.GetChildAt(1)->GetNodeStats().GetTransformFunction(), 79);
}

TEST_F(ApplyTree, BothSpellingsAreOneFunction) {
    EXPECT_EQ(Root("<Apply function='lg10'><FieldRef field='x'/></Apply>").GetTransformFunction(), 7);
    EXPECT_EQ(Root("<Apply function='log10'><FieldRef field='x'/></Apply>").GetTransformFunction(), 7);
    EXPECT_EQ(Root("<Apply function='rtrim'><FieldRef field='s'/></Apply>").GetTransformFunction(), 60);
    EXPECT_EQ(Root("<Apply function='trimend'><FieldRef field='s'/></Apply>").GetTransformFunction(), 60);
}

TEST_F(ApplyTree, ReplacementsTakeTheTypeOfTheTarget) {
    const std::string apply = "<Apply function='length' mapMissingTo='1.50' defaultValue='2'>"
                              "<FieldRef field='s'/></Apply>";
    const ApplyNodeStats numeric = Root(apply);
    EXPECT_EQ(ToText(numeric.GetRecodeMissValueRep()), "1.5");
    EXPECT_EQ(ToText(numeric.GetDefaultValue()), "2");
    target.SetVarType(ScoreDictVar::STRING_VAR);
    const ApplyNodeStats text = Root(apply);
    EXPECT_EQ(ToText(text.GetRecodeMissValueRep()), "'1.50'");
    EXPECT_EQ(ToText(text.GetDefaultValue()), "'2'");
}

TEST_F(ApplyTree, NoReplacementsWithoutTheirAttributes) {
    const ApplyNodeStats& stats = Root("<Apply function='abs' mapMissingTo='' defaultValue=''>"
                                       "<FieldRef field='x'/></Apply>");
    EXPECT_EQ(stats.GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(stats.GetDefaultValue(), nullptr);
    EXPECT_EQ(stats.GetFieldrefRecodeMissValueRep(), nullptr);
}

TEST_F(ApplyTree, NestedReplacementsTakeTheTypeOfTheSameTarget) {
    const FunctionTree& tree = Tree("<Apply function='sum'><Apply function='length' mapMissingTo='3'>"
                                    "<FieldRef field='s'/></Apply></Apply>");
    EXPECT_EQ(ToText(tree.GetChildAt(0)->GetNodeStats().GetRecodeMissValueRep()), "3");
}

TEST_F(ApplyTree, InvalidValueTreatment) {
    const auto treatment = [this](const std::string& word) {
        return Root("<Apply function='sum' invalidValueTreatment='" + word + "'/>").GetInvalidValueTreatmentMethod();
    };
    EXPECT_EQ(treatment("returnInvalid"), 0);
    EXPECT_EQ(treatment("asIs"), 1);
    EXPECT_EQ(treatment("asMissing"), 2);
    EXPECT_EQ(treatment("asValue"), 3);
    EXPECT_EQ(treatment(""), 3);
    EXPECT_EQ(Root("<Apply function='sum'/>").GetInvalidValueTreatmentMethod(), 3);
}

TEST_F(ApplyTree, FieldLeaf) {
    const ApplyNodeStats& leaf = Only("abs", "<FieldRef field='x'/>");
    EXPECT_EQ(leaf.GetParameterName(), "x");
    EXPECT_FALSE(leaf.IsConstNode());
    EXPECT_EQ(leaf.GetValue(), nullptr);
    EXPECT_EQ(leaf.GetVariable(), nullptr);
    EXPECT_EQ(leaf.GetVarIndex(), -1);
}

TEST_F(ApplyTree, ReplacementOfAFieldTakesTheFieldsType) {
    EXPECT_EQ(ToText(Only("isMissing", "<FieldRef field='x' mapMissingTo='2.0'/>").GetFieldrefRecodeMissValueRep()),
              "2");
    EXPECT_EQ(ToText(Only("isMissing", "<FieldRef field='s' mapMissingTo='2.0'/>").GetFieldrefRecodeMissValueRep()),
              "'2.0'");
    EXPECT_EQ(Only("isMissing", "<FieldRef field='s' mapMissingTo=''/>").GetFieldrefRecodeMissValueRep(), nullptr);
}

struct ConstantRow {
    const char* name;
    const char* function;
    const char* constant;
    const char* value;
};

class ApplyConstant : public ApplyTree, public testing::WithParamInterface<ConstantRow> {};

TEST_P(ApplyConstant, IsALeafOfItsValue) {
    const ApplyNodeStats& leaf = Only(GetParam().function, GetParam().constant);
    EXPECT_TRUE(leaf.IsConstNode());
    EXPECT_EQ(leaf.GetParameterName(), "");
    EXPECT_EQ(ToText(leaf.GetValue()), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ApplyConstant,
    testing::Values(ConstantRow{"Number", "abs", "<Constant>1.50</Constant>", "1.5"},
                    ConstantRow{"TypedNumber", "abs", "<Constant dataType='integer'>2</Constant>", "2"},
                    ConstantRow{"Text", "isMissing", "<Constant dataType='string'>1.50</Constant>", "'1.50'"},
                    ConstantRow{"TextByDefault", "concat", "<Constant>1.50</Constant>", "'1.50'"},
                    ConstantRow{"MethodNameElsewhereIsAText", "isMissing",
                                "<Constant dataType='string'>asIs</Constant>", "'asIs'"}),
    NameOfRow());

TEST_F(ApplyTree, TextsByDefaultUnderMatchesAndReplace) {
    const FunctionTree& matches =
        Tree("<Apply function='matches'><Constant>1</Constant><Constant>2</Constant></Apply>");
    EXPECT_EQ(Nodes(matches), Texts({"0:matches", "1:'1'", "2:'2'"}));
    const FunctionTree& replace = Tree("<Apply function='replace'><Constant>1</Constant><Constant>2</Constant>"
                                       "<Constant dataType='string'>3</Constant></Apply>");
    EXPECT_EQ(Nodes(replace), Texts({"3:replace", "4:'1'", "5:'2'", "6:'3'"}));
}

TEST_F(ApplyTree, OutlierMethodsAreCodes) {
    for (const auto& [word, code] :
         {std::pair{"asMissingValues", "1"}, std::pair{"asExtremeValues", "2"}, std::pair{"asIs", "0"}}) {
        const std::string method = "<Constant dataType='string'>" + std::string(word) + "</Constant>";
        const std::string number = "<Constant>5</Constant>";
        const FunctionTree& tree = Tree("<Apply function='outlierHandle'><FieldRef field='x'/>" + method + number +
                                        number + number + number + "</Apply>");
        EXPECT_EQ(ToText(tree.GetChildAt(1)->GetNodeStats().GetValue()), code);
        EXPECT_EQ(ToText(tree.GetChildAt(2)->GetNodeStats().GetValue()), "5");
    }
}

TEST_F(ApplyTree, ArraysHangOnTheNodeAndAreNoArguments) {
    const FunctionTree& tree = Tree("<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/>"
                                    "<Extension><Array>1 2</Array></Extension><FieldRef field='x'/>"
                                    "<Extension><Note/><Array n='2'>3 4</Array></Extension></Apply>");
    EXPECT_EQ(tree.GetChildCount(), 2);
    const ApplyNodeStats& stats = tree.GetNodeStats();
    ASSERT_EQ(stats.GetNumberOfArray(), 2);
    EXPECT_EQ(stats.GetArray(0), std::vector<double>({1, 2}));
    EXPECT_EQ(stats.GetArray(1), std::vector<double>({3, 4}));
    EXPECT_EQ(stats.GetNodeID(), "0");
    EXPECT_EQ(stats.GetTransformFunction(), 71);
}

TEST_F(ApplyTree, ArraysMayHangOnAnyFunction) {
    EXPECT_EQ(Root("<Apply function='sum'><Extension><Array>1</Array></Extension></Apply>").GetNumberOfArray(), 1);
}

TEST_F(ApplyTree, ThirdArrayIsTooManyForTheImputation) {
    const std::string array = "<Extension><Array>1</Array></Extension>";
    ExpectFailure(
        [&] {
            Tree("<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><FieldRef field='x'/>" +
                 array + array + array + "</Apply>");
        },
        {PROCESSING_FAILED, "imputeCatFieldMissingAgainstConTarget"});
}

// Fields are looked up among the inputs first.
TEST_F(ApplyTree, DerivedFieldStandsBehindAnInputOfItsName) {
    const ParsedXml xml = ParseXml("<Apply function='abs'><FieldRef field='x' mapMissingTo='1'/></Apply>");
    const std::unique_ptr<ScoreDictionary> texts(dictionary->Clone());
    texts->GetVar("x")->SetVarType(ScoreDictVar::STRING_VAR);
    const std::unique_ptr<FunctionTree> tree(
        translator.HandleApply(xml.Root(), &target, nullptr, dictionary.get(), texts.get()));
    EXPECT_EQ(ToText(tree->GetChildAt(0)->GetNodeStats().GetFieldrefRecodeMissValueRep()), "1");
    ExpectFailure([&] { translator.HandleApply(xml.Root(), &target, nullptr, texts.get(), dictionary.get()); },
                  {FUNCTION_PARAMETER_TYPE_MISMATCH, "abs", "x"});
}

TEST_F(ApplyTree, NodeJoinsItsParent) {
    const ParsedXml xml = ParseXml("<Apply function='abs'><FieldRef field='x'/></Apply>");
    FunctionTreeImp parent(true);
    FunctionTree* node = Handle(xml.Root(), &parent);
    ASSERT_EQ(parent.GetChildCount(), 1);
    EXPECT_EQ(parent.GetChildAt(0), node);
}

TEST_F(ApplyTree, ParentThatTakesNoChildrenLeavesTheNodeToTheCaller) {
    const ParsedXml xml = ParseXml("<Apply function='abs'><FieldRef field='x'/></Apply>");
    FunctionTreeImp parent(false);
    const std::unique_ptr<FunctionTree> node(Handle(xml.Root(), &parent));
    EXPECT_EQ(parent.GetChildCount(), 0);
    EXPECT_EQ(node->GetParent(), nullptr);
    const ParsedXml refused = ParseXml("<Apply function='abs'/>");
    ExpectFailure([&] { Handle(refused.Root(), &parent); }, {REQUIRES_PARAMETERS, "1"});
}

// The node stays with its parent, stripped of its arguments, whose places stay behind empty.
TEST_F(ApplyTree, NodeThatFailsLosesItsChildrenAndStaysWithItsParent) {
    const ParsedXml xml = ParseXml("<Apply function='abs'><FieldRef field='x'/><FieldRef field='s'/></Apply>");
    FunctionTreeImp parent(true);
    ExpectFailure([&] { Handle(xml.Root(), &parent); }, {REQUIRES_PARAMETERS, "1"});
    ASSERT_EQ(parent.GetChildCount(), 1);
    const FunctionTree* node = parent.GetChildAt(0);
    ASSERT_NE(node, nullptr);
    ASSERT_EQ(node->GetChildCount(), 2);
    EXPECT_EQ(node->GetChildAt(0), nullptr);
    EXPECT_EQ(node->GetChildAt(1), nullptr);
}

TEST_F(ApplyTree, FaultBeforeTheNodeIsMadeLeavesTheParentAlone) {
    FunctionTreeImp parent(true);
    const ParsedXml unknown = ParseXml("<Apply function='plus'/>");
    ExpectFailure([&] { Handle(unknown.Root(), &parent); }, {UNSUPPORTED_VALUE, "plus", "function"});
    const ParsedXml value = ParseXml("<Apply function='abs' mapMissingTo='a'/>");
    ExpectFailure([&] { Handle(value.Root(), &parent); }, {INVALID_VALUE_OF_TYPE, "a", "double"});
    EXPECT_EQ(parent.GetChildCount(), 0);
    EXPECT_EQ(translator.fNodeCounter, 0);
}

TEST_F(ApplyTree, TranslatorStaysUsableAfterAFault) {
    const ParsedXml xml = ParseXml("<Apply function='abs'><Apply function='abs'/></Apply>");
    for (int run = 0; run < 1500; ++run) {
        ExpectFailure([&] { Handle(xml.Root()); }, {REQUIRES_PARAMETERS, "1"});
    }
    EXPECT_EQ(Nodes(Tree("<Apply function='sum'/>")), Texts({"3000:<not defined>"}));
}

TEST_F(ApplyTree, LeafForAField) {
    FunctionTreeImp node(true);
    translator.fNodeCounter = 7;
    translator.SetLeafNodeStats("x", &node, 0, false, nullptr);
    translator.SetLeafNodeStats("s", &node, 0, true, new StringValue("none"));
    ASSERT_EQ(node.GetChildCount(), 2);
    const ApplyNodeStats& first = node.GetChildAt(0)->GetNodeStats();
    EXPECT_EQ(first.GetNodeID(), "7");
    EXPECT_EQ(first.GetParameterName(), "x");
    EXPECT_FALSE(first.IsConstNode());
    EXPECT_EQ(first.GetFieldrefRecodeMissValueRep(), nullptr);
    const ApplyNodeStats& second = node.GetChildAt(1)->GetNodeStats();
    EXPECT_EQ(second.GetNodeID(), "8");
    EXPECT_TRUE(second.IsConstNode());
    EXPECT_EQ(ToText(second.GetFieldrefRecodeMissValueRep()), "'none'");
    EXPECT_FALSE(node.GetChildAt(1)->GetAllowsChildren());
}

} // namespace
} // namespace veltrane::tests
