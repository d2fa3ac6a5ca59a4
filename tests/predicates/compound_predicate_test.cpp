#include "conditions.h"

#include <MCVeltrane_900/CompoundPredicate.h>
#include <MCVeltrane_900/FalsePredicate.h>
#include <MCVeltrane_900/TruePredicate.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

using Children = std::vector<ScorePredicate*>;

TEST(CompoundPredicate, FieldsAtFirst) {
    const CompoundPredicate compound;
    EXPECT_EQ(compound.GetPredType(), ScorePredicate::COMPOUND_PREDICATE);
    EXPECT_EQ(compound.GetBoolOperator(), ScorePredicate::BOOL_SURROGATE);
    EXPECT_EQ(compound.GetCount(), 0);
    EXPECT_TRUE(compound.GetPredicates().empty());
    EXPECT_FALSE(compound.IsDerivedPredictor());
    EXPECT_EQ(compound.GetSplit(), nullptr);
    EXPECT_EQ(CompoundPredicate(ScorePredicate::BOOL_XOR).GetBoolOperator(), ScorePredicate::BOOL_XOR);
}

TEST(CompoundPredicate, Display) {
    EXPECT_EQ(Dump(CompoundPredicate()), "Compound Predicate: \n");
}

TEST(CompoundPredicate, OperatorCanBeSet) {
    CompoundPredicate compound;
    compound.SetBoolOperator(ScorePredicate::BOOL_AND);
    EXPECT_EQ(compound.GetBoolOperator(), ScorePredicate::BOOL_AND);
}

TEST(CompoundPredicate, HasNoSplit) {
    const Continuous x;
    const ScaleSplit split(&x);
    CompoundPredicate compound;
    compound.SetSplit(&split);
    EXPECT_EQ(compound.GetSplit(), nullptr);
}

TEST(CompoundPredicate, ChildrenInOrder) {
    CompoundPredicate compound;
    auto* first = new TruePredicate;
    auto* second = new FalsePredicate;
    compound.AddPredicate(first);
    compound.AddPredicate(second);
    EXPECT_EQ(compound.GetCount(), 2);
    EXPECT_EQ(compound.GetPredicates(), (Children{first, second}));
    const CompoundPredicate& constant = compound;
    EXPECT_EQ(&constant.GetPredicates(), &compound.GetPredicates());
}

TEST(CompoundPredicate, RemovedChildGoesBackToTheCaller) {
    Watch watch;
    CompoundPredicate compound;
    auto* a = new WatchedPredicate('a', kTrue, watch);
    auto* b = new WatchedPredicate('b', kTrue, watch);
    auto* c = new WatchedPredicate('c', kTrue, watch);
    for (auto* child : {a, b, c}) {
        compound.AddPredicate(child);
    }
    EXPECT_TRUE(compound.RemovePredicate(b));
    EXPECT_EQ(watch.deleted, 0);
    EXPECT_EQ(compound.GetPredicates(), (Children{a, c}));
    EXPECT_FALSE(compound.RemovePredicate(b));
    delete b;
}

TEST(CompoundPredicate, RemovesTheFirstChildWithTheAddress) {
    Watch watch;
    CompoundPredicate compound;
    auto* twice = new WatchedPredicate('a', kTrue, watch);
    auto* other = new WatchedPredicate('b', kTrue, watch);
    for (auto* child : {twice, other, twice}) {
        compound.AddPredicate(child);
    }
    EXPECT_TRUE(compound.RemovePredicate(twice));
    EXPECT_EQ(compound.GetPredicates(), (Children{other, twice}));
}

TEST(CompoundPredicate, RemovesNothingThatIsNotThere) {
    CompoundPredicate compound;
    TruePredicate stranger;
    EXPECT_FALSE(compound.RemovePredicate(&stranger));
    EXPECT_FALSE(compound.RemovePredicate(nullptr));
    compound.AddPredicate(new TruePredicate);
    EXPECT_FALSE(compound.RemovePredicate(&stranger));
    EXPECT_FALSE(compound.RemovePredicate(nullptr));
    EXPECT_EQ(compound.GetCount(), 1);
}

TEST(CompoundPredicate, DeletesItsChildren) {
    Watch watch;
    {
        CompoundPredicate compound;
        compound.AddPredicate(new WatchedPredicate('a', kTrue, watch));
        compound.AddPredicate(new WatchedPredicate('b', kTrue, watch));
    }
    EXPECT_EQ(watch.deleted, 2);
}

TEST(CompoundPredicate, DeletesAChildThatWasAddedTwiceOnce) {
    Watch watch;
    {
        CompoundPredicate compound(ScorePredicate::BOOL_XOR);
        auto* twice = new WatchedPredicate('a', kTrue, watch);
        for (auto* child : {twice, new WatchedPredicate('b', kTrue, watch), twice}) {
            compound.AddPredicate(child);
        }
        EXPECT_EQ(compound.Evaluate({}), kTrue);
        EXPECT_EQ(watch.evaluated, "aba");
    }
    EXPECT_EQ(watch.deleted, 2);
}

TEST(CompoundPredicate, NullChildIsUnknown) {
    for (const auto boolOperator : {ScorePredicate::BOOL_OR, ScorePredicate::BOOL_AND, ScorePredicate::BOOL_XOR,
                                    ScorePredicate::BOOL_SURROGATE}) {
        CompoundPredicate compound(boolOperator);
        compound.AddPredicate(nullptr);
        EXPECT_EQ(compound.GetCount(), 1);
        EXPECT_EQ(compound.Evaluate({}), kUnknown);
        EXPECT_EQ(compound.Evaluate(nullptr, nullptr), kUnknown);
        EXPECT_EQ(compound.EvaluateSurrogate({}, 0),
                  boolOperator == ScorePredicate::BOOL_SURROGATE ? kUnknown : kFalse);
        EXPECT_FALSE(compound.IsDerivedPredictor());
        EXPECT_EQ(CompoundPredicate(compound).GetPredicates(), Children{nullptr});
        EXPECT_TRUE(compound.RemovePredicate(nullptr));
        EXPECT_EQ(compound.GetCount(), 0);
    }
}

TEST(CompoundPredicate, IsDerivedWhenOneChildIs) {
    Watch watch;
    CompoundPredicate compound;
    compound.AddPredicate(new WatchedPredicate('a', kTrue, watch, false));
    EXPECT_FALSE(compound.IsDerivedPredictor());
    compound.AddPredicate(new WatchedPredicate('b', kTrue, watch, true));
    compound.AddPredicate(new WatchedPredicate('c', kTrue, watch, false));
    EXPECT_TRUE(compound.IsDerivedPredictor());
}

TEST(CompoundPredicate, CloneHasChildrenOfItsOwn) {
    Watch watch;
    CompoundPredicate compound(ScorePredicate::BOOL_AND);
    compound.AddPredicate(new WatchedPredicate('a', kTrue, watch));
    compound.AddPredicate(new WatchedPredicate('b', kUnknown, watch));
    {
        const std::unique_ptr<ScorePredicate> clone(compound.Clone());
        ASSERT_NE(dynamic_cast<CompoundPredicate*>(clone.get()), nullptr);
        const auto& copy = static_cast<CompoundPredicate&>(*clone);
        EXPECT_EQ(copy.GetBoolOperator(), ScorePredicate::BOOL_AND);
        EXPECT_EQ(copy.GetCount(), 2);
        EXPECT_NE(copy.GetPredicates()[0], compound.GetPredicates()[0]);
        EXPECT_EQ(copy.Evaluate({}), kUnknown);
        EXPECT_EQ(watch.evaluated, "ab");
    }
    EXPECT_EQ(watch.deleted, 2);
}

TEST(KeptCompoundAssignment, AppendsChildren) {
    Watch watch;
    CompoundPredicate target(ScorePredicate::BOOL_AND);
    auto* own = new WatchedPredicate('a', kUnknown, watch);
    target.AddPredicate(own);
    CompoundPredicate source(ScorePredicate::BOOL_SURROGATE);
    source.AddPredicate(new WatchedPredicate('b', kUnknown, watch));
    source.AddPredicate(new WatchedPredicate('c', kTrue, watch));
    target = source;
    EXPECT_EQ(target.GetBoolOperator(), ScorePredicate::BOOL_SURROGATE);
    ASSERT_EQ(target.GetCount(), 3);
    EXPECT_EQ(target.GetPredicates()[0], own);
    EXPECT_NE(target.GetPredicates()[1], source.GetPredicates()[0]);
    EXPECT_EQ(target.Evaluate({}), kSurrogateTrue);
    EXPECT_EQ(watch.evaluated, "abc");
    EXPECT_EQ(watch.deleted, 0);
}

TEST(CompoundPredicate, SelfAssignmentChangesNothing) {
    CompoundPredicate compound(ScorePredicate::BOOL_OR);
    compound.AddPredicate(new TruePredicate);
    const CompoundPredicate& same = compound;
    compound = same;
    EXPECT_EQ(compound.GetCount(), 1);
}
