#include "data/sets/counted_values.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using veltrane::tests::Dump;
using Names = std::vector<std::string>;

/// A variable that counts its own destruction; its clones are plain.
class CountedVar : public DictVar {
public:
    CountedVar(const std::string& name, int& deleted) : DictVar(name, kNUMERIC_VAR), fDeleted(deleted) {}
    ~CountedVar() override { ++fDeleted; }

private:
    int& fDeleted;
};

ScoreDictVar* Var(const std::string& name) {
    return new DictVar(name, ScoreDictVar::kNUMERIC_VAR);
}

TEST(BaseDictionary, AddVarRefusesAnEmptyNameAndNull) {
    BaseDictionary dictionary;
    DictVar var("a", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_FALSE(dictionary.AddVar("", &var));
    EXPECT_FALSE(dictionary.AddVar("a", nullptr));
    EXPECT_EQ(dictionary.Size(), 0);
    EXPECT_EQ(dictionary.GetVarNames(), Names{});
}

TEST(BaseDictionary, OwnsItsVariables) {
    int deleted = 0;
    {
        BaseDictionary dictionary;
        EXPECT_TRUE(dictionary.AddVar("a", new CountedVar("a", deleted)));
        EXPECT_TRUE(dictionary.AddVar("b", new CountedVar("b", deleted)));
        EXPECT_EQ(dictionary.Size(), 2);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(BaseDictionary, FindsByTheNameOfTheEntry) {
    BaseDictionary dictionary;
    ScoreDictVar* var = Var("inner");
    ASSERT_TRUE(dictionary.AddVar("outer", var));
    EXPECT_EQ(dictionary.GetVar("outer"), var);
    EXPECT_EQ(dictionary.GetVar("inner"), nullptr);
    const ScoreDictionary& constant = dictionary;
    EXPECT_EQ(constant.GetVar("outer"), var);
    EXPECT_EQ(constant.GetVar(""), nullptr);
}

TEST(KeptBaseDictionary, NameCountsUpToItsFirstNul) {
    BaseDictionary dictionary;
    ScoreDictVar* var = Var("a");
    ASSERT_TRUE(dictionary.AddVar("a", var));
    EXPECT_EQ(dictionary.GetVar(std::string("a\0b", 3)), var);
    ScoreDictVar* hidden = Var("b");
    ASSERT_TRUE(dictionary.AddVar(std::string("b\0c", 3), hidden));
    EXPECT_EQ(dictionary.GetVar(std::string("b\0c", 3)), nullptr);
    EXPECT_TRUE(dictionary.RemoveVar(std::string("b\0c", 3)));
}

TEST(KeptBaseDictionary, AddVarOfAKnownNameKeepsTheFirstAndListsTheNameTwice) {
    int deleted = 0;
    auto second = std::make_unique<CountedVar>("a", deleted);
    BaseDictionary dictionary;
    ScoreDictVar* first = Var("a");
    EXPECT_TRUE(dictionary.AddVar("a", first));
    EXPECT_TRUE(dictionary.AddVar("a", second.get()));
    EXPECT_EQ(dictionary.Size(), 1);
    EXPECT_EQ(dictionary.GetVarNames(), (Names{"a", "a"}));
    EXPECT_EQ(dictionary.GetVar("a"), first);
    EXPECT_EQ(deleted, 0);
}

TEST(KeptBaseDictionary, RemoveVarKeepsTheNameInTheList) {
    int deleted = 0;
    BaseDictionary dictionary;
    ASSERT_TRUE(dictionary.AddVar("a", new CountedVar("a", deleted)));
    ASSERT_TRUE(dictionary.AddVar("b", Var("b")));
    EXPECT_TRUE(dictionary.RemoveVar("a"));
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(dictionary.GetVar("a"), nullptr);
    EXPECT_EQ(dictionary.Size(), 1);
    EXPECT_EQ(dictionary.GetVarNames(), (Names{"a", "b"}));
}

TEST(BaseDictionary, RemoveVarOfAnEmptyOrUnknownName) {
    BaseDictionary dictionary;
    ASSERT_TRUE(dictionary.AddVar("a", Var("a")));
    EXPECT_FALSE(dictionary.RemoveVar(""));
    EXPECT_FALSE(dictionary.RemoveVar("b"));
    EXPECT_EQ(dictionary.Size(), 1);
}

TEST(BaseDictionary, VariablesAreSortedAndNamesAreNot) {
    BaseDictionary dictionary;
    ScoreDictVar* b = Var("b");
    ScoreDictVar* a = Var("a");
    ASSERT_TRUE(dictionary.AddVar("b", b));
    ASSERT_TRUE(dictionary.AddVar("a", a));
    EXPECT_EQ(dictionary.GetScoreDictVars(), (std::vector<ScoreDictVar*>{a, b}));
    EXPECT_EQ(dictionary.GetVarNames(), (Names{"b", "a"}));
}

TEST(BaseDictionary, NamesAreOrderedByTheirBytes) {
    BaseDictionary dictionary;
    for (const char* name : {"\xc3\xa9", "z", "Z", "_", "10", "9"}) {
        ASSERT_TRUE(dictionary.AddVar(name, Var(name)));
    }
    Names sorted;
    for (const ScoreDictVar* var : dictionary.GetScoreDictVars()) {
        sorted.push_back(var->GetName());
    }
    EXPECT_EQ(sorted, (Names{"10", "9", "Z", "_", "z", "\xc3\xa9"}));
}

TEST(KeptBaseDictionary, AddVarOfADictionaryReturnsFalseAlthoughVariablesWereAdded) {
    BaseDictionary other;
    ASSERT_TRUE(other.AddVar("y", Var("y")));
    ASSERT_TRUE(other.AddVar("x", Var("x")));
    BaseDictionary dictionary;
    EXPECT_FALSE(dictionary.AddVar(&other));
    EXPECT_EQ(dictionary.Size(), 2);
    EXPECT_NE(dictionary.GetVar("x"), nullptr);
    EXPECT_NE(dictionary.GetVar("x"), other.GetVar("x"));
    EXPECT_FALSE(dictionary.AddVar(nullptr));
    EXPECT_EQ(dictionary.Size(), 2);
}

TEST(KeptBaseDictionary, AddVarOfADictionaryReplacesTheListOfNames) {
    BaseDictionary other;
    ASSERT_TRUE(other.AddVar("y", Var("y")));
    ASSERT_TRUE(other.AddVar("a", Var("a")));
    BaseDictionary dictionary;
    ScoreDictVar* own = Var("a");
    ASSERT_TRUE(dictionary.AddVar("a", own));
    ASSERT_TRUE(dictionary.AddVar("b", Var("b")));
    dictionary.AddVar(&other);
    EXPECT_EQ(dictionary.GetVarNames(), (Names{"y", "a"}));
    EXPECT_EQ(dictionary.Size(), 3);
    EXPECT_EQ(dictionary.GetVar("a"), own);
    EXPECT_NE(dictionary.GetVar("b"), nullptr);
}

TEST(BaseDictionary, AddVarOfADictionaryStepsOverNamesWithoutAVariable) {
    BaseDictionary other;
    ASSERT_TRUE(other.AddVar("gone", Var("gone")));
    ASSERT_TRUE(other.AddVar("x", Var("x")));
    ASSERT_TRUE(other.RemoveVar("gone"));
    BaseDictionary dictionary;
    dictionary.AddVar(&other);
    EXPECT_EQ(dictionary.Size(), 1);
    EXPECT_EQ(dictionary.GetVarNames(), (Names{"gone", "x"}));
}

TEST(BaseDictionary, AddVarOfItselfChangesNothing) {
    BaseDictionary dictionary;
    ScoreDictVar* var = Var("a");
    ASSERT_TRUE(dictionary.AddVar("a", var));
    EXPECT_FALSE(dictionary.AddVar(&dictionary));
    EXPECT_EQ(dictionary.GetVar("a"), var);
    EXPECT_EQ(dictionary.GetVarNames(), Names{"a"});
}

TEST(BaseDictionary, CopyConstructorClonesVariablesAndCopiesNames) {
    BaseDictionary source;
    ASSERT_TRUE(source.AddVar("b", Var("b")));
    ASSERT_TRUE(source.AddVar("a", Var("a")));
    const BaseDictionary copy(source);
    std::unique_ptr<ScoreDictionary> clone(source.Clone());
    for (const ScoreDictionary* other :
         {static_cast<const ScoreDictionary*>(&copy), static_cast<const ScoreDictionary*>(clone.get())}) {
        EXPECT_EQ(other->Size(), 2);
        EXPECT_EQ(other->GetVarNames(), (Names{"b", "a"}));
        EXPECT_NE(other->GetVar("a"), source.GetVar("a"));
        EXPECT_EQ(other->GetVar("a")->GetName(), "a");
    }
    const ScoreDictionary& cloned = *clone;
    EXPECT_EQ(typeid(cloned), typeid(BaseDictionary));
}

TEST(KeptBaseDictionary, AssignmentKeepsItsOwnListOfNames) {
    int deleted = 0;
    BaseDictionary source;
    ASSERT_TRUE(source.AddVar("x", Var("x")));
    BaseDictionary target;
    ASSERT_TRUE(target.AddVar("old", new CountedVar("old", deleted)));
    target = source;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(target.Size(), 1);
    EXPECT_NE(target.GetVar("x"), nullptr);
    EXPECT_NE(target.GetVar("x"), source.GetVar("x"));
    EXPECT_EQ(target.GetVar("old"), nullptr);
    EXPECT_EQ(target.GetVarNames(), Names{"old"});
}

TEST(BaseDictionary, SelfAssignmentKeepsTheVariables) {
    BaseDictionary dictionary;
    ScoreDictVar* var = Var("a");
    ASSERT_TRUE(dictionary.AddVar("a", var));
    const BaseDictionary& alias = dictionary;
    dictionary = alias;
    EXPECT_EQ(dictionary.GetVar("a"), var);
}

TEST(BaseDictionary, Displays) {
    BaseDictionary dictionary;
    EXPECT_EQ(Dump(dictionary), "\n ############ Begin dictionary display ################ \nEnd Of ScoreDictionary "
                                "display.\n\n");
    ASSERT_TRUE(dictionary.AddVar("b", Var("b")));
    ASSERT_TRUE(dictionary.AddVar("a", Var("a")));
    EXPECT_EQ(Dump(dictionary), "\n ############ Begin dictionary display ################ \n" +
                                    Dump(*dictionary.GetVar("a")) + Dump(*dictionary.GetVar("b")) +
                                    "End Of ScoreDictionary display.\n\n");
}

/// A dictionary that finds one variable under every name.
class OneVarDictionary : public BaseDictionary {
public:
    using BaseDictionary::GetVar;
    ScoreDictVar* GetVar(const std::string&) override { return &fVar; }

    DictVar fVar{"one", kNumeric};

private:
    static constexpr ScoreDictVar::VariableType kNumeric = ScoreDictVar::kNUMERIC_VAR;
};

TEST(BaseDictionary, ConstantLookupGoesThroughTheVirtualOperation) {
    const OneVarDictionary dictionary;
    const ScoreDictionary& constant = dictionary;
    EXPECT_EQ(constant.GetVar("whatever"), &dictionary.fVar);
}

TEST(BaseDictionaryRevision, ChangesWithEveryChangeOfTheVariables) {
    BaseDictionary other;
    ASSERT_TRUE(other.AddVar("b", Var("b")));
    BaseDictionary dictionary;
    unsigned long long last = dictionary.GetRevision();
    const auto changed = [&] {
        const bool isNew = dictionary.GetRevision() != last;
        last = dictionary.GetRevision();
        return isNew;
    };
    dictionary.AddVar("a", Var("a"));
    EXPECT_TRUE(changed());
    dictionary.AddVar(&other);
    EXPECT_TRUE(changed());
    dictionary.RemoveVar("a");
    EXPECT_TRUE(changed());
    dictionary = other;
    EXPECT_TRUE(changed());
}

TEST(BaseDictionaryRevision, StaysWithoutAChange) {
    BaseDictionary dictionary;
    ASSERT_TRUE(dictionary.AddVar("a", Var("a")));
    const unsigned long long revision = dictionary.GetRevision();
    std::unique_ptr<ScoreDictVar> second(Var("a"));
    dictionary.AddVar("a", second.get());
    dictionary.AddVar("", second.get());
    dictionary.RemoveVar("b");
    dictionary.GetVar("a");
    EXPECT_EQ(dictionary.GetRevision(), revision);
}

TEST(BaseDictionaryRevision, IsNeverThatOfAnotherDictionary) {
    const BaseDictionary first;
    const BaseDictionary second;
    const BaseDictionary copy(first);
    EXPECT_NE(first.GetRevision(), second.GetRevision());
    EXPECT_NE(first.GetRevision(), copy.GetRevision());
}

} // namespace
} // namespace MCVeltrane_900
