#include "support/vtable_slot.h"

#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/ScoreSplitVar.h>

#include <gtest/gtest.h>

// Plug-ins call these interfaces by their places in the virtual table; the two destructors stand first.
namespace MCVeltrane_900 {
namespace {

using veltrane::tests::ExpectInOrder;

TEST(PredicateVirtualOrder, ScorePredicate) {
    using T = ScorePredicate;
    using Encoded = T::PredicateResult (T::*)(const std::vector<double>&) const;
    using Records = T::PredicateResult (T::*)(const ScoreCaseRecord*, const ScoreCaseRecord*) const;
    ExpectInOrder(&T::Clone, static_cast<Encoded>(&T::Evaluate), static_cast<Records>(&T::Evaluate), &T::GetPredType,
                  &T::IsDerivedPredictor, &T::SetSplit, &T::GetSplit, &T::Display);
}

TEST(PredicateVirtualOrder, ScoreSplitVar) {
    using T = ScoreSplitVar;
    using ByNumber = int (T::*)(double) const;
    using ByValue = int (T::*)(const ScoreValue*) const;
    ExpectInOrder(&T::Clone, &T::SetSplitVar, &T::SetMissvalMap, &T::GetSplitVar, &T::GetSplitName, &T::GetSplitLabel,
                  &T::GetSplitType, &T::GetSplitVarType, &T::GetSplitMLevel, &T::GetMissvalMap,
                  static_cast<ByNumber>(&T::GetSplitChildIndex), static_cast<ByValue>(&T::GetSplitChildIndex),
                  &T::Display);
}

} // namespace
} // namespace MCVeltrane_900
