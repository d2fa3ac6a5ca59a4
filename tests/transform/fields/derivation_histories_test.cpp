#include "transform/apply/apply_fields.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

// A lag moves on each time that its field is asked for, by whichever way. Random fields over lags are compared with an
// evaluation that asks for every field anew and keeps nothing, in their dictionary, alone, and below more fields than
// stand on the stack.

namespace veltrane::tests {
namespace {

enum class Kind { REFERENCE, MAP, LAG, MAXIMUM, CHOICE };

/// What a field is made of. Its sources are earlier fields, or an input for a negative number.
struct Plan {
    Kind kind;
    std::vector<int> sources;
    int n = 1;
};

constexpr int kInputs = 2;

std::string NameOf(int source) {
    return source < 0 ? "x" + std::to_string(-source) : "f" + std::to_string(source);
}

/// Numbers stay within 0, 1, 2 and missing, so that tables and blocks find them again.
double Mapped(double sum) {
    return static_cast<int>(sum) % 3;
}

std::vector<Plan> RandomPlans(std::mt19937& random, int count) {
    std::vector<Plan> plans;
    for (int i = 0; i < count; ++i) {
        Plan plan{i == 0 ? Kind::LAG : static_cast<Kind>(random() % 5), {}};
        const std::size_t sources = plan.kind == Kind::REFERENCE ? 1
                                    : plan.kind == Kind::MAXIMUM ? 2
                                    : plan.kind == Kind::CHOICE  ? 3
                                                                 : 1 + random() % 2;
        for (std::size_t k = 0; k < sources; ++k) {
            const bool isInput = i == 0 || random() % 5 == 0;
            plan.sources.push_back(isInput ? -1 - static_cast<int>(random() % kInputs)
                                           : static_cast<int>(random() % static_cast<unsigned>(i)));
        }
        plan.n = 1 + static_cast<int>(random() % 3);
        plans.push_back(plan);
    }
    return plans;
}

/// Evaluates each field from its sources each time that it is asked for.
class Plain {
public:
    explicit Plain(const std::vector<Plan>& plans)
        : fPlans(plans), fResults(plans.size()), fIsComputed(plans.size()), fHistories(plans.size()),
          fBlocks(plans.size()) {}

    void StartCase(const std::vector<double>& inputs) {
        fInputs = inputs;
        fIsComputed.assign(fPlans.size(), false);
    }

    double Compute(int field) {
        fStored[field] = Evaluate(field);
        fIsComputed[Index(field)] = true;
        return fStored[field];
    }

    double Evaluate(int source) {
        if (source < 0) {
            return fInputs[Index(-source - 1)];
        }
        const Plan& plan = fPlans[Index(source)];
        const double result = plan.kind == Kind::REFERENCE ? Evaluate(plan.sources[0])
                              : plan.kind == Kind::MAP     ? Look(plan)
                              : plan.kind == Kind::LAG     ? Lag(source, plan)
                                                           : Apply(plan);
        fResults[Index(source)] = result;
        return result;
    }

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

    /// What stands in a field now, which a later evaluation of it may have changed.
    double Standing(int source) { return source < 0 ? fInputs[Index(-source - 1)] : fResults[Index(source)]; }

    double Look(const Plan& plan) {
        Evaluate(plan.sources.back());
        for (const int source : plan.sources) {
            if (Evaluate(source) == kMissing) {
                return 0;
            }
        }
        double sum = 0;
        for (const int source : plan.sources) {
            sum += Standing(source);
        }
        return Mapped(sum);
    }

    double Lag(int field, const Plan& plan) {
        std::deque<double>& history = fHistories[Index(field)];
        Evaluate(plan.sources[0]);
        bool isSameBlock = true;
        if (plan.sources.size() > 1) {
            std::deque<double>& block = fBlocks[Index(field)];
            const double now = Evaluate(plan.sources[1]);
            if (block.size() == Index(plan.n)) {
                isSameBlock = block.front() == now;
                block.pop_front();
            }
            block.push_back(now);
        }
        double outcome = kMissing;
        if (history.size() == Index(plan.n)) {
            outcome = isSameBlock ? history.front() : kMissing;
            history.pop_front();
        }
        history.push_back(Standing(plan.sources[0]));
        return outcome;
    }

    double Leaf(int source) { return source >= 0 && fIsComputed[Index(source)] ? fStored[source] : Evaluate(source); }

    double Apply(const Plan& plan) {
        const double first = Leaf(plan.sources[0]);
        const double second = Leaf(plan.sources[1]);
        if (plan.kind == Kind::MAXIMUM) {
            return std::max(first, second); // the missing number is the smallest
        }
        return first == 1 ? second : Leaf(plan.sources[2]);
    }

    const std::vector<Plan>& fPlans;
    std::vector<double> fInputs;
    std::vector<double> fResults;
    std::map<int, double> fStored;
    std::vector<bool> fIsComputed;
    std::vector<std::deque<double>> fHistories;
    std::vector<std::deque<double>> fBlocks;
};

class DerivationHistories : public ApplyFields {
protected:
    void Build(const std::vector<Plan>& plans) {
        for (int i = 1; i <= kInputs; ++i) {
            Input(NameOf(-i), 0.0);
        }
        for (std::size_t i = 0; i < plans.size(); ++i) {
            fields.push_back(&Make(plans[i], NameOf(static_cast<int>(i))));
        }
    }

    void SetInputs(const std::vector<double>& inputs) {
        for (int i = 1; i <= kInputs; ++i) {
            record.SetValue(NameOf(-i), inputs[static_cast<std::size_t>(i) - 1]);
        }
    }

    /// A chain of references on top of a field, so long that what it refers to waits in a list.
    TransformVar& Top(const std::string& source, ScoreDictVar::VariableType type = kNumeric) {
        std::string below = source;
        TransformVar* top = nullptr;
        for (int i = 0; i < 300; ++i) {
            const std::string name = "top" + std::to_string(i);
            top = &Derived(name, type, below, TD::TE_FIELD_REF);
            below = name;
        }
        return *top;
    }

    const ScoreDictVar& Var(const std::string& name) {
        const ScoreDictVar* var = dictionary.GetVar(name);
        return var != nullptr ? *var : *derived.GetVar(name);
    }

    std::vector<TransformVar*> fields;

private:
    TransformVar& Make(const Plan& plan, const std::string& name) {
        switch (plan.kind) {
        case Kind::REFERENCE:
            return Derived(name, kNumeric, NameOf(plan.sources[0]), TD::TE_FIELD_REF);
        case Kind::MAP:
            return MakeMap(plan, name);
        case Kind::LAG: {
            TransformVar& lag = Derived(name, kNumeric, NameOf(plan.sources[0]), TD::TE_LAG);
            std::vector<const ScoreDictVar*> blocks;
            if (plan.sources.size() > 1) {
                blocks.push_back(&Var(NameOf(plan.sources[1])));
            }
            lag.SetLags(plan.n, blocks);
            return lag;
        }
        case Kind::MAXIMUM:
            return Apply(kNumeric, Call(TD::TF_MAX, Leaves(plan)), name);
        default: {
            std::vector<FunctionTreeImp*> children = Leaves(plan);
            children[0] = Call(TD::TF_EQUAL, {children[0], Const(1.0)});
            return Apply(kNumeric, Call(TD::TF_IF, children), name);
        }
        }
    }

    std::vector<FunctionTreeImp*> Leaves(const Plan& plan) {
        std::vector<FunctionTreeImp*> leaves;
        for (const int source : plan.sources) {
            leaves.push_back(Field(NameOf(source)));
        }
        return leaves;
    }

    TransformVar& MakeMap(const Plan& plan, const std::string& name) {
        TransformVar& field = Derived(name, kNumeric, NameOf(plan.sources.back()), TD::TE_MAP_VALUES);
        auto* map = new MapValues(&field);
        auto* table = new InlineTable;
        for (const int source : plan.sources) {
            table->AppendInputField(&Var(NameOf(source)));
        }
        for (int a = 0; a < 3; ++a) {
            for (int b = 0; b < (plan.sources.size() > 1 ? 3 : 1); ++b) {
                std::vector<ScoreValue*> row{Num(a)};
                if (plan.sources.size() > 1) {
                    row.push_back(Num(b));
                }
                table->AddInputOutput(row, Num(Mapped(a + b)));
            }
        }
        map->SetMapMissingValue(Num(0));
        map->SetDefaultValue(Num(-2));
        map->SetTable(table);
        field.SetMapValues(map);
        return field;
    }
};

using KeptHistories = DerivationHistories;

std::vector<double> RandomInputs(std::mt19937& random) {
    std::vector<double> inputs;
    for (int i = 0; i < kInputs; ++i) {
        inputs.push_back(random() % 7 == 0 ? kMissing : static_cast<double>(random() % 3));
    }
    return inputs;
}

constexpr int kFields = 10;
constexpr int kCases = 12;

class RandomHistories : public DerivationHistories, public ::testing::WithParamInterface<unsigned> {
protected:
    RandomHistories() : random(GetParam()), plans(RandomPlans(random, kFields)), plain(plans) { Build(plans); }

    std::mt19937 random;
    const std::vector<Plan> plans;
    Plain plain;
};

TEST_P(RandomHistories, InTheirTurnsFieldsGiveWhatEvaluatingEachAnewGives) {
    derived.SetUpDerivedCaseRecord();
    for (int i = 0; i < kCases; ++i) {
        const std::vector<double> inputs = RandomInputs(random);
        SetInputs(inputs);
        plain.StartCase(inputs);
        const ScoreCaseRecord* values = derived.GetValuesForDerivedVars(&record, &dictionary);
        for (int field = 0; field < kFields; ++field) {
            ASSERT_EQ(values->Get(NameOf(field))->GetDouble(), plain.Compute(field)) << "case " << i << " f" << field;
        }
    }
}

TEST_P(RandomHistories, AskedForAloneTheLastFieldGivesIt) {
    for (int i = 0; i < kCases; ++i) {
        const std::vector<double> inputs = RandomInputs(random);
        SetInputs(inputs);
        plain.StartCase(inputs);
        ASSERT_EQ(Value(*fields.back())->GetDouble(), plain.Evaluate(kFields - 1)) << "case " << i;
    }
}

TEST_P(RandomHistories, BelowMoreFieldsThanStandOnTheStackItGivesIt) {
    TransformVar& top = Top(NameOf(kFields - 1));
    for (int i = 0; i < kCases; ++i) {
        const std::vector<double> inputs = RandomInputs(random);
        SetInputs(inputs);
        plain.StartCase(inputs);
        ASSERT_EQ(Value(top)->GetDouble(), plain.Evaluate(kFields - 1)) << "case " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomHistories, ::testing::Range(1U, 61U));

TEST_F(KeptHistories, AChainOverALagMovesItOnOnceForEachOfItsFields) {
    Input("x", 0.0);
    Derived("lag", kNumeric, "x", TD::TE_LAG);
    TransformVar& top = Top("lag");
    derived.SetUpDerivedCaseRecord();
    for (int i = 1; i <= 3; ++i) {
        record.SetValue("x", i);
        derived.GetValuesForDerivedVars(&record, &dictionary);
        // The lag itself sees the case before; it has taken this case by the time that the next field asks for it.
        EXPECT_EQ(Written(derived.GetVarValue("lag")), i == 1 ? "number SYSMIS" : "number " + std::to_string(i - 1));
        EXPECT_EQ(Written(derived.GetVarValue("top0")), "number " + std::to_string(i));
        EXPECT_EQ(Written(derived.GetVarValue(top.GetName())), "number " + std::to_string(i));
    }
}

TEST_F(DerivationHistories, ALongChainOverALagIsEvaluated) {
    Input("x", 0.0);
    std::string below = "x";
    TransformVar* top = nullptr;
    for (int i = 0; i < 1002; ++i) {
        const std::string name = "d" + std::to_string(i);
        top = &Derived(name, kNumeric, below, i == 0 ? TD::TE_LAG : TD::TE_FIELD_REF);
        below = name;
    }
    for (int i = 1; i <= 4; ++i) {
        record.SetValue("x", i);
        EXPECT_EQ(Result(*top), i == 1 ? "number SYSMIS" : "number " + std::to_string(i - 1));
    }
}

class TextHistories : public DerivationHistories, public ::testing::WithParamInterface<bool> {};

TEST_P(TextHistories, ATextHasItsFieldsWidthAsItsLengthWhereverItIsEvaluated) {
    Input("t", "red").SetWidth(9);
    Derived("lag", kText, "t", TD::TE_LAG).SetWidth(6);
    Derived("same", kText, "lag", TD::TE_FIELD_REF);
    TransformVar& joined =
        Apply(kText, Call(TD::TF_CONCAT, {Field("lag"), Field("t"), Field("lag"), Field("same")}), "joined");
    TransformVar& asked = GetParam() ? Top("joined", kText) : joined;
    EXPECT_EQ(Result(asked), "text '      red      red   red'");
    record.SetValue("t", "green");
    EXPECT_EQ(Result(asked), "text 'red   green    green green'");
    record.SetValue("t", "blue");
    EXPECT_EQ(Result(asked), "text 'green blue     blue  blue'");
}

INSTANTIATE_TEST_SUITE_P(Depths, TextHistories, ::testing::Bool(),
                         [](const auto& param) { return param.param ? "Deep" : "Shallow"; });

} // namespace
} // namespace veltrane::tests
