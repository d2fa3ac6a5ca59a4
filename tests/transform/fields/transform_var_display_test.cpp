#include "fields.h"
#include "transform/trees/trees.h"

#include <sstream>

using namespace veltrane::tests;

namespace {

/// What a field without content shows, by the text of its expression, with `more` ahead of the end.
std::string Framed(const TransformVar& field, const std::string& more) {
    std::ostringstream out;
    field.DictVar::Display(out);
    return out.str() + "Start Display Parameters: \n\nEXPRESSION: " + more + "End one TransformVar display\n\n";
}

std::string Leaf(const std::string& id, int level) {
    return "Start FunctionTree Display:\nNode ID = " + id + "\ncode =79\n  Level = " + std::to_string(level) +
           "\n\nEnd FunctionTree Display. \n\n";
}

} // namespace

TEST(TransformVarDisplay, WholeText) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("x", TD::TE_FIELD_REF);
    EXPECT_EQ(Shown(field), "Start ScoreDictVar Display:\n"
                            "Var Name = d; Var Lable = ; Var Type = kNUMERIC_VAR; Var level =  Continuous; \n"
                            "End of ScoreDictVar Display.\n\n"
                            "Start Display Parameters: \n\n"
                            "EXPRESSION: FieldRef\n"
                            "End one TransformVar display\n\n");
}

TEST(TransformVarDisplay, ExpressionTexts) {
    const char* texts[] = {"Constant\n",
                           "FieldRef\n",
                           "NormContinuous\n",
                           "NormDiscrete\n",
                           "Discretize\n",
                           "MapValues\n",
                           "Apply\n",
                           "",
                           ""};
    for (int kind = 0; kind <= 8; ++kind) {
        TransformVar field("d", kNumeric);
        field.AddFieldNameAndTransExpression("x", static_cast<TD::TransExpression>(kind));
        EXPECT_EQ(Shown(field), Framed(field, texts[kind])) << kind;
    }
}

TEST(TransformVarDisplay, Bins) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("x", TD::TE_DISCRETIZE);
    field.AddBinningValue(new Range(0.0, 1.0, true, false), Num(2.5), "x");
    field.AddBinningValue(new Range(1.0, 2.0, true, true), nullptr, "x");
    EXPECT_EQ(Shown(field), Framed(field, "Discretize\n"
                                          "Bin values\n"
                                          "  Start Range Display   \n"
                                          "MinValue: 0;  MaxValue: 1; High End not included; lower End included"
                                          "\n End of Range Display\n\n"
                                          "2.5\n"
                                          "  Start Range Display   \n"
                                          "MinValue: 1;  MaxValue: 2; High End included; lower End included"
                                          "\n End of Range Display\n\n"
                                          "recodeIntervalCopy\n"));
}

TEST(TransformVarDisplay, EncodedValues) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("x", TD::TE_MAP_VALUES);
    field.AddEncodingMap(Txt("a"), Num(1));
    field.AddEncodingMap(Txt("b"), nullptr);
    EXPECT_EQ(Shown(field), Framed(field, "MapValues\n"
                                          "Original values and its encoded values\n"
                                          "a; 1\n"
                                          "b; \n"));
}

TEST(KeptTransformVarDisplay, EveryNodeShowsItsBranchAgain) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("", TD::TE_APPLY);
    auto root = Root("0");
    FunctionTreeImp* middle = AddNode(root.get(), "1");
    AddNode(middle, "2");
    AddNode(root.get(), "3");
    field.SetRoot(root.release());
    const std::string middleText = "Start FunctionTree Display:\nNode ID = 1\ncode =79\n  Level = 1\n\n"
                                   "Number of children = 1\n" +
                                   Leaf("2", 2) + "End FunctionTree Display. \n\n";
    const std::string rootText = "Start FunctionTree Display:\nNode ID = 0\ncode =79\n  Level = 0\n\n"
                                 "Number of children = 2\n" +
                                 middleText + Leaf("3", 1) + "End FunctionTree Display. \n\n";
    EXPECT_EQ(Shown(field), Framed(field, "Apply\n" + rootText + middleText + Leaf("2", 2) + Leaf("3", 1)));
}

TEST(TransformVarDisplay, NullSlotsOfTheTreeAreLeftOut) {
    TransformVar field("d", kNumeric);
    auto root = Root("0");
    AddNode(root.get(), "1");
    root->Remove(0);
    field.SetRoot(root.release());
    EXPECT_EQ(Shown(field), Framed(field, "Start FunctionTree Display:\nNode ID = 0\ncode =79\n  Level = 0\n\n"
                                          "Number of children = 1\nEnd FunctionTree Display. \n\n"));
}
