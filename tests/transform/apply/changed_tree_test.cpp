#include "apply_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

// A host that keeps the nodes of a field's tree can change it between cases. Each case gives what the walk over the
// tree gives, to the bit.

namespace veltrane::tests {
namespace {

class ChangedTree : public ApplyFields {
protected:
    ChangedTree() {
        Input("x", 2.0);
        Input("y", 3.0);
        Input("t", "text");
    }

    static FunctionTreeImp* Named(FunctionTreeImp* node, const std::string& id) {
        ApplyNodeStats stats(node->GetNodeStats());
        stats.SetNodeID(id);
        node->SetNodeStats(stats);
        return node;
    }

    /// The first case of another field with this tree, which is walked. A copy wouldn't do: it has no empty slots.
    std::string Walked(FunctionTree& root, ScoreDictVar::VariableType type) {
        TransformVar fresh("fresh", type);
        fresh.AddFieldNameAndTransExpression("", TD::TE_APPLY);
        fresh.SetRoot(&root);
        const std::string result = Bits(fresh.GetTransformedValue(&record, &dictionary, &derived));
        fresh.SetRoot(nullptr);
        return result;
    }

    static std::string Bits(const ScoreValue* value) {
        std::string text = Written(value);
        if (value != nullptr && value->GetType() == ScoreValue::NUMERIC_VALUE) {
            const double number = value->GetDouble();
            unsigned long long bits = 0;
            std::memcpy(&bits, &number, sizeof bits);
            text += " " + std::to_string(bits);
        }
        return text;
    }

    /// Evaluates the tree until it runs as a plan.
    TransformVar& Planned(FunctionTreeImp* root) {
        TransformVar& field = Apply(kNumeric, root);
        for (int i = 0; i < 3; ++i) {
            Value(field);
        }
        return field;
    }

    /// Makes a change and expects the result of that case and of later ones.
    void ExpectAfter(const std::string& expected, TransformVar& field, const std::function<void()>& change) {
        change();
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(Result(field), expected) << "case " << i;
        }
        EXPECT_EQ(Bits(Value(field)), Walked(const_cast<FunctionTree&>(*field.GetRoot()), kNumeric));
    }
};

TEST_F(ChangedTree, AnotherFunction) {
    FunctionTreeImp* root = Call(TD::TF_PLUS, {Field("x"), Field("y")});
    TransformVar& field = Planned(root);
    ExpectAfter("number 6", field, [&] {
        ApplyNodeStats stats(root->GetNodeStats());
        stats.SetTransformFunction(TD::TF_MULTIPLY);
        root->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AnotherFunctionOfAnInnerNode) {
    FunctionTreeImp* inner = Call(TD::TF_PLUS, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_MINUS, {inner, Const(1.0)}));
    ExpectAfter("number 5", field, [&] {
        ApplyNodeStats stats(inner->GetNodeStats());
        stats.SetTransformFunction(TD::TF_MULTIPLY);
        inner->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AnotherFieldOfALeaf) {
    FunctionTreeImp* leaf = Field("x");
    TransformVar& field = Planned(Call(TD::TF_PLUS, {leaf, Const(10.0)}));
    ExpectAfter("number 13", field, [&] {
        ApplyNodeStats stats;
        stats.SetNodeID("1");
        stats.SetParameterName("y");
        leaf->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AConstantInPlaceOfAField) {
    FunctionTreeImp* leaf = Field("x");
    TransformVar& field = Planned(Call(TD::TF_PLUS, {leaf, Const(10.0)}));
    ExpectAfter("number 11", field, [&] {
        ApplyNodeStats stats;
        stats.SetConstNode(true);
        stats.SetValue(Own(Num(1)));
        leaf->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AnotherConstantWhoseValueTakesThePlaceOfTheOldOne) {
    FunctionTreeImp* leaf = Const(10.0);
    TransformVar& field = Planned(Call(TD::TF_PLUS, {Field("x"), leaf}));
    ExpectAfter("number 22", field, [&] {
        ApplyNodeStats stats(leaf->GetNodeStats());
        owned.clear(); // the old value is gone
        stats.SetValue(Own(Num(20)));
        leaf->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AnotherNumberInAConstant) {
    FunctionTreeImp* leaf = Const(10.0);
    TransformVar& field = Planned(Call(TD::TF_PLUS, {Field("x"), leaf}));
    ExpectAfter("number 32", field,
                [&] { static_cast<NumericValue*>(leaf->GetNodeStats().GetValue())->SetDoubleValue(30); });
}

TEST_F(ChangedTree, AnArgumentMore) {
    FunctionTreeImp* root = Call(TD::TF_PLUS, {Field("x"), Field("y")});
    TransformVar& field = Planned(root);
    ExpectAfter("number 105", field, [&] { root->Add(Named(Const(100.0), "more")); });
    ExpectAfter("number 106", field, [&] { root->Insert(Named(Const(1.0), "one more"), 0); });
}

TEST_F(ChangedTree, AnArgumentMoreOfAnInnerNode) {
    FunctionTreeImp* inner = Call(TD::TF_PLUS, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_MINUS, {inner, Const(1.0)}));
    ExpectAfter("number 104", field, [&] { inner->Add(Named(Const(100.0), "more")); });
}

TEST_F(ChangedTree, ARemovedArgument) {
    FunctionTreeImp* leaf = Field("y");
    FunctionTreeImp* root = Call(TD::TF_SUM, {Field("x"), leaf});
    TransformVar& field = Planned(root);
    ExpectAfter("number 2", field, [&] { root->Remove(leaf); });
}

TEST_F(ChangedTree, AnArgumentRemovedByItsPlace) {
    FunctionTreeImp* root = Call(TD::TF_SUM, {Field("x"), Field("y")});
    TransformVar& field = Planned(root);
    ExpectAfter("number 3", field, [&] { root->Remove(0); });
}

TEST_F(ChangedTree, ANodeThatRemovesItself) {
    FunctionTreeImp* inner = Call(TD::TF_PLUS, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_SUM, {Const(1.0), inner}));
    ExpectAfter("number 1", field, [&] { inner->RemoveFromParent(); });
}

TEST_F(ChangedTree, AllChildrenRemoved) {
    FunctionTreeImp* inner = Call(TD::TF_SUM, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_SUM, {Const(1.0), inner}));
    ExpectAfter("number 1", field, [&] { inner->RemoveAllChildren(); });
    ExpectAfter("number 8", field, [&] { inner->Add(Named(Const(7.0), "new")); });
}

TEST_F(ChangedTree, ChildrenThatAreNoMoreAllowed) {
    FunctionTreeImp* inner = Call(TD::TF_SUM, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_SUM, {Const(1.0), inner}));
    ExpectAfter("number 1", field, [&] { inner->SetAllowsChildren(false); });
}

TEST_F(ChangedTree, ANodeTakenIntoAnotherTreeIsDestroyed) {
    FunctionTreeImp* inner = Call(TD::TF_SUM, {Field("x"), Field("y")});
    TransformVar& field = Planned(Call(TD::TF_SUM, {Const(1.0), inner}));
    FunctionTreeImp other;
    ExpectAfter("number 1", field, [&] { other.Add(inner); });
    EXPECT_EQ(other.GetChildCount(), 0);
}

TEST_F(ChangedTree, AnotherReplacementOfMissingValues) {
    MakeMissing(static_cast<DictVar&>(*dictionary.GetVar("x")), 2);
    FunctionTreeImp* leaf = Field("x");
    FunctionTreeImp* root = Call(TD::TF_SUM, {leaf, Field("x")});
    TransformVar& field = Planned(root);
    EXPECT_EQ(Result(field), "number SYSMIS");
    ExpectAfter("number 50", field, [&] {
        ApplyNodeStats stats(root->GetNodeStats());
        stats.SetRecodeMissValueTo(Own(Num(50)));
        root->SetNodeStats(stats);
    });
    ExpectAfter("number 4", field, [&] {
        ApplyNodeStats stats(leaf->GetNodeStats());
        stats.SetFieldrefRecodeMissValueTo(Own(Num(4)));
        leaf->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, AConditionThatTestsAnotherField) {
    FunctionTreeImp* leaf = Field("x");
    TransformVar& field = Planned(Call(TD::TF_IF, {Call(TD::TF_IS_MISSING, {leaf}), Const(1.0), Const(0.0)}));
    MakeMissing(static_cast<DictVar&>(*dictionary.GetVar("y")), 3);
    ExpectAfter("number 1", field, [&] {
        ApplyNodeStats stats;
        stats.SetParameterName("y");
        leaf->SetNodeStats(stats);
    });
}

TEST_F(ChangedTree, ALeafThatIsToldOfAnotherParent) {
    // A missing value goes unreplaced to a leaf that takes itself for an argument of "value".
    MakeMissing(static_cast<DictVar&>(*dictionary.GetVar("x")), 2);
    FunctionTreeImp* leaf = Field("x");
    FunctionTreeImp* root = Call(TD::TF_SUM, {leaf, Const(1.0)});
    TransformVar& field = Planned(root);
    EXPECT_EQ(Result(field), "number 1");
    FunctionTreeImp value;
    ApplyNodeStats stats;
    stats.SetTransformFunction(TD::TF_VALUE);
    value.SetNodeStats(stats);
    leaf->SetParent(&value);
    EXPECT_EQ(Result(field), "number 3");
    // Its changes are not told to the tree that holds it now.
    ApplyNodeStats other;
    other.SetParameterName("y");
    leaf->SetNodeStats(other);
    EXPECT_EQ(Result(field), "number 4");
    EXPECT_EQ(Result(field), "number 4");
    leaf->SetParent(root);
    leaf->SetNodeStats(other);
    EXPECT_EQ(Result(field), "number 4");
    EXPECT_EQ(Result(field), "number 4");
}

TEST_F(ChangedTree, ParentsInACircleEnd) {
    FunctionTreeImp one;
    FunctionTreeImp two;
    FunctionTreeImp three;
    one.SetParent(&two);
    two.SetParent(&three);
    three.SetParent(&two);
    one.SetNodeStats(ApplyNodeStats());
    one.SetParent(&one);
    one.SetNodeStats(ApplyNodeStats());
    two.SetParent(nullptr);
    EXPECT_EQ(three.GetParent(), &two);
}

/// A host's node, which tells nobody what it takes over.
class SilentNode : public FunctionTreeImp {
public:
    const ApplyNodeStats& GetNodeStats() const override { return stats; }
    ApplyNodeStats stats;
};

TEST_F(ChangedTree, ANodeOfAHostsClassIsAskedEachTime) {
    auto* leaf = new SilentNode;
    leaf->stats.SetConstNode(true);
    leaf->stats.SetValue(Own(Num(1)));
    FunctionTreeImp* root = Call(TD::TF_PLUS, {Field("x")});
    root->Add(leaf);
    TransformVar& field = Planned(root);
    EXPECT_EQ(Result(field), "number 3");
    leaf->stats.SetValue(Own(Num(10)));
    EXPECT_EQ(Result(field), "number 12");
    auto* silentRoot = new SilentNode;
    silentRoot->stats.SetTransformFunction(TD::TF_PLUS);
    silentRoot->Add(Named(Const(1.0), "1"));
    silentRoot->Add(Named(Const(5.0), "2"));
    TransformVar& other = Apply(kNumeric, silentRoot, "other");
    EXPECT_EQ(Result(other), "number 6");
    silentRoot->stats.SetTransformFunction(TD::TF_POW);
    EXPECT_EQ(Result(other), "number 1");
}

// ---- changes at random ----

constexpr TD::TransformFunction kFunctions[] = {
    TD::TF_PLUS, TD::TF_MINUS,      TD::TF_MULTIPLY, TD::TF_SUM,   TD::TF_MAX,       TD::TF_MEDIAN,
    TD::TF_IF,   TD::TF_IS_MISSING, TD::TF_EQUAL,    TD::TF_IS_IN, TD::TF_ABS,       TD::TF_VALUE,
    TD::TF_AND,  TD::TF_LENGTH,     TD::TF_SYSMIS,   TD::TF_FLOOR, TD::TF_LESS_THAN,
};

class RandomChanges : public ChangedTree, public ::testing::WithParamInterface<unsigned> {
protected:
    RandomChanges() : random(GetParam()) {
        MakeMissing(static_cast<DictVar&>(*dictionary.GetVar("x")), 1);
        Derived("computed", kNumeric, "y", TD::TE_FIELD_REF);
        derived.SetUpDerivedCaseRecord();
        if (GetParam() % 2 == 0) {
            derived.GetValuesForDerivedVars(&record, &dictionary); // from then on its value stands in the record
        }
    }

    std::size_t Draw(std::size_t count) { return random() % count; }

    ApplyNodeStats LeafStats() {
        ApplyNodeStats stats;
        if (Draw(3) == 0) {
            stats.SetConstNode(true);
            stats.SetValue(Own(Draw(8) == 0 ? Txt("3") : Num(static_cast<double>(Draw(4)))));
        } else {
            static const char* const kNames[] = {"x", "y", "t", "computed", "nobody"};
            stats.SetParameterName(kNames[Draw(5)]);
            stats.SetFieldrefRecodeMissValueTo(Draw(4) == 0 ? Own(Num(7)) : nullptr);
        }
        stats.SetNodeID(std::to_string(++ids));
        return stats;
    }

    ApplyNodeStats FunctionStats() {
        ApplyNodeStats stats;
        stats.SetTransformFunction(kFunctions[Draw(std::size(kFunctions))]);
        stats.SetRecodeMissValueTo(Draw(4) == 0 ? Own(Num(9)) : nullptr);
        stats.SetNodeID(std::to_string(++ids));
        return stats;
    }

    FunctionTreeImp* Tree(int depth) {
        if (depth == 0 || Draw(4) == 0) {
            return Node(LeafStats());
        }
        FunctionTreeImp* node = Node(FunctionStats());
        for (std::size_t i = 0, count = 1 + Draw(3); i < count; ++i) {
            node->Add(Tree(depth - 1));
        }
        return node;
    }

    /// Any node of the tree.
    FunctionTreeImp& AnyNode(FunctionTreeImp& root) {
        std::vector<FunctionTreeImp*> nodes{&root};
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            for (FunctionTree* child : nodes[i]->Children()) {
                if (child != nullptr) {
                    nodes.push_back(static_cast<FunctionTreeImp*>(child));
                }
            }
        }
        return *nodes[Draw(nodes.size())];
    }

    void Change(FunctionTreeImp& root) {
        FunctionTreeImp& node = AnyNode(root);
        const bool isFunction = !node.IsLeaf();
        switch (Draw(8)) {
        case 0:
        case 1:
            node.SetNodeStats(isFunction ? FunctionStats() : LeafStats());
            break;
        case 2:
        case 3:
            if (isFunction) {
                node.Add(Tree(2));
            }
            break;
        case 4:
            node.Remove(static_cast<int>(Draw(3)));
            break;
        case 5:
            if (&node != &root) {
                node.RemoveFromParent();
            }
            break;
        case 6:
            if (isFunction && Draw(4) == 0) {
                node.RemoveAllChildren();
                node.Add(Tree(1));
            }
            break;
        default:
            if (auto* number = dynamic_cast<NumericValue*>(node.GetNodeStats().GetValue())) {
                number->SetDoubleValue(static_cast<double>(Draw(4)));
            }
        }
    }

    std::mt19937 random;
    int ids = 0;
};

TEST_P(RandomChanges, EachCaseIsThatOfAWalk) {
    FunctionTreeImp* root = Node(FunctionStats());
    root->Add(Tree(3));
    root->Add(Tree(3));
    TransformVar& field = Apply(Draw(4) == 0 ? kText : kNumeric, root);
    for (int i = 0; i < 60; ++i) {
        record.SetValue("x", static_cast<double>(Draw(4)));
        record.SetValue("y", static_cast<double>(Draw(4)));
        record.SetValue("t", Draw(2) == 0 ? "1" : "2");
        const std::string before = Draw(2) == 0 ? Walked(*root, field.GetVarType()) : "";
        const std::string result = Bits(Value(field));
        ASSERT_EQ(result, before.empty() ? Walked(*root, field.GetVarType()) : before) << "case " << i;
        if (Draw(2) == 0) {
            Change(*root);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomChanges, ::testing::Range(1U, 101U));

} // namespace
} // namespace veltrane::tests
