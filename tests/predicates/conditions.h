#ifndef VELTRANE_TESTS_PREDICATES_CONDITIONS_H
#define VELTRANE_TESTS_PREDICATES_CONDITIONS_H

#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScaleSplit.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

/// Variables, splits, cases and watched predicates for the tests of conditions.
namespace veltrane::tests {

using namespace MCVeltrane_900;

constexpr auto kNumeric = ScoreDictVar::kNUMERIC_VAR;
constexpr auto kText = ScoreDictVar::STRING_VAR;
constexpr auto kTrue = ScorePredicate::PRED_TRUE;
constexpr auto kFalse = ScorePredicate::PRED_FALSE;
constexpr auto kUnknown = ScorePredicate::PRED_UNKNOWN;
constexpr auto kSurrogateTrue = ScorePredicate::PRED_SURROGATE_TRUE;

/// A variable, at place 0 of a record and of an encoded case.
class Variable : public DictVar {
public:
    Variable(VariableType type, MeasureLevel level, const std::string& name = "x") : DictVar(name, type) {
        SetMLevel(level);
        SetValueIndex(0);
        SetEncodedValueIndex(0);
    }

    bool IsDerivedVariable() const override { return fDerived; }
    Variable& Derived() {
        fDerived = true;
        return *this;
    }
    Variable& Categories(const std::vector<std::string>& categories) {
        for (const std::string& category : categories) {
            AddScoreValueLabel(ToMyValue(category), category);
        }
        return *this;
    }
    Variable& Encoded(const std::vector<std::string>& categories) {
        if (GetVarType() == STRING_VAR) {
            SetEncoder(new ScoreCatStringEncoder(categories));
        } else {
            SetEncoder(new ScoreCatNumericEncoder(0));
            for (const std::string& category : categories) {
                GetEncoder()->Encode(category);
            }
        }
        return *this;
    }
    Variable& Missing(const std::string& value) {
        auto* missing = new MissingValueSet;
        missing->Add(new Range(ToMyValue(value)));
        SetMissingValues(missing);
        return *this;
    }

private:
    bool fDerived = false;
};

class Continuous : public Variable {
public:
    explicit Continuous(const std::string& name = "x") : Variable(kNUMERIC_VAR, LEVEL_CONTINUOUS, name) {}
};
class Ordinal : public Variable {
public:
    explicit Ordinal(VariableType type) : Variable(type, LEVEL_ORDINAL) {}
};
class Categorical : public Variable {
public:
    explicit Categorical(VariableType type) : Variable(type, LEVEL_NOMINAL) {}
};

/// A split with one closed range, child 0.
inline ScaleSplit* InRange(const ScoreDictVar& var, double low, double high) {
    auto* split = new ScaleSplit(&var);
    split->PutSplit(new Range(low, high, true, true), 0);
    return split;
}

/// A split of values, child 0, made from texts by the variable.
inline DiscreteSplit* OfValues(const ScoreDictVar& var, const std::vector<std::string>& values) {
    auto* split = new DiscreteSplit(&var);
    for (const std::string& value : values) {
        split->PutSplit(var.ToMyValue(value), 0);
    }
    return split;
}

/// A split of codes, child 0.
inline DiscreteSplit* OfCodes(const ScoreDictVar& var, const std::vector<double>& codes) {
    auto* split = new DiscreteSplit(&var);
    for (const double code : codes) {
        split->PutSplit(code, 0);
    }
    return split;
}

/// The same split with a child for missing values.
template <typename Split>
Split* WithMissing(Split* split, int child) {
    split->SetMissvalMap(child);
    return split;
}

/// A split with one value that counts its own destruction.
inline DiscreteSplit* OfCountedText(const ScoreDictVar& var, int& deleted) {
    auto* split = new DiscreteSplit(&var);
    split->PutSplit(new CountedText("a", deleted), 0);
    return split;
}

/// Expects that a predicate deletes its split.
template <typename Predicate>
void ExpectToOwnItsSplit() {
    const Categorical x(kText);
    int deleted = 0;
    {
        DiscreteSplit* split = OfCountedText(x, deleted);
        const Predicate predicate(split);
        EXPECT_EQ(predicate.GetSplit(), split);
    }
    EXPECT_EQ(deleted, 1);
}

/// Expects that a predicate that is given another split doesn't delete the former one.
template <typename Predicate>
void ExpectToLeaveTheFormerSplit() {
    const Categorical x(kText);
    int deleted = 0;
    DiscreteSplit* former = OfCountedText(x, deleted);
    {
        Predicate predicate(former);
        auto* split = new DiscreteSplit(&x);
        predicate.SetSplit(split);
        EXPECT_EQ(predicate.GetSplit(), split);
    }
    EXPECT_EQ(deleted, 0);
    delete former;
    EXPECT_EQ(deleted, 1);
}

/// A case with one value, which may be null.
class Case : public CaseRecord {
public:
    explicit Case(ScoreValue* value, const std::string& name = "x") { Add(name, value); }
    explicit Case(std::nullptr_t) : Case(static_cast<ScoreValue*>(nullptr)) {}
    explicit Case(double value) : Case(new NumericValue(value)) {}
    explicit Case(const char* text) : Case(new StringValue(text)) {}
};

/// What happened to the watched predicates of a test.
struct Watch {
    std::string evaluated; ///< their names in the order of evaluation
    int deleted = 0;
};

/// A predicate with a result of its own that records what is done with it.
class WatchedPredicate : public ScorePredicate {
public:
    WatchedPredicate(char name, PredicateResult result, Watch& watch, bool isDerived = false)
        : fName(name), fResult(result), fWatch(watch), fIsDerived(isDerived) {}
    WatchedPredicate(const WatchedPredicate&) = default;
    ~WatchedPredicate() override { ++fWatch.deleted; }

    ScorePredicate* Clone() const override { return new WatchedPredicate(*this); }
    PredicateResult Evaluate(const std::vector<double>&) const override { return Evaluated(); }
    PredicateResult Evaluate(const ScoreCaseRecord*, const ScoreCaseRecord*) const override { return Evaluated(); }
    PredicateType GetPredType() const override { return TRUE_PREDICATE; }
    bool IsDerivedPredictor() const override { return fIsDerived; }
    void SetSplit(const ScoreSplitVar*) override {}
    const ScoreSplitVar* GetSplit() const override { return nullptr; }
    void Display(std::ostream& out) const override { out << fName; }

private:
    PredicateResult Evaluated() const {
        fWatch.evaluated += fName;
        return fResult;
    }

    char fName;
    PredicateResult fResult;
    Watch& fWatch;
    bool fIsDerived;
};

} // namespace veltrane::tests

#endif
