#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/apply/apply_reading.h"
#include "translators/apply/function_list.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

// Every function with none to eight arguments of every kind, and those of a fixed number with every combination of
// kinds, against the rules worked out from the list of functions.

namespace veltrane::tests {
namespace {

/// An argument as a document gives it, and what there is to know about it.
struct Argument {
    const char* element;
    enum Sort { FIELD, CONSTANT, NESTED } sort;

    /// What messages call it: the field, the constant's kind. Empty for a nested function.
    const char* name;

    /// Of a field its variable type, 0 for a number.
    int type;

    /// Of a constant the dataType that it states; of a nested function nothing.
    const char* dataType;

    /// Of a nested function its number.
    int function;
};

const Argument kNumericField = {"<FieldRef field='x'/>", Argument::FIELD, "x", 0, "", 79};
const Argument kTextField = {"<FieldRef field='s'/>", Argument::FIELD, "s", 1, "", 79};
const Argument kDateField = {"<FieldRef field='d'/>", Argument::FIELD, "d", 4, "", 79};

const std::vector<Argument> kArguments = {
    kNumericField,
    kTextField,
    kDateField,
    {"<Constant>1</Constant>", Argument::CONSTANT, "Constant_D_", 0, "", 79},
    {"<Constant dataType='double'>1</Constant>", Argument::CONSTANT, "Constant_D_", 0, "double", 79},
    {"<Constant dataType='string'>asIs</Constant>", Argument::CONSTANT, "Constant_S_", 0, "string", 79},
    {"<Constant dataType='dateDaysSince[1970]'>1</Constant>", Argument::CONSTANT, "Constant_T_", 0,
     "dateDaysSince[1970]", 79},
    {"<Apply function='abs'><FieldRef field='x'/></Apply>", Argument::NESTED, "", 0, "", 5},
    {"<Apply function='lower'><FieldRef field='s'/></Apply>", Argument::NESTED, "", 0, "", 56},
    {"<Apply function='length'><FieldRef field='s'/></Apply>", Argument::NESTED, "", 0, "", 63},
    {"<Apply function='and'/>", Argument::NESTED, "", 0, "", 50},
    {"<Apply function='greaterOrEqual'/>", Argument::NESTED, "", 0, "", 47},
    {"<Apply function='if'/>", Argument::NESTED, "", 0, "", 64},
};

using Arguments = std::vector<Argument>;

struct Refusal {
    int id;
    std::string text;

    bool operator==(const Refusal&) const = default;
};

void PrintTo(const Refusal& failure, std::ostream* out) {
    *out << failure.id << " " << failure.text;
}

using Outcome = std::optional<Refusal>;

/// Such functions take a constant for a text and refuse one that says otherwise.
bool ReadsTexts(const ListedFunction& function) {
    return function.takes == Takes::TEXT_CONSTANTS;
}

Outcome ReadingOutcome(const ListedFunction& function, const Arguments& arguments) {
    for (const Argument& argument : arguments) {
        const std::string type = argument.dataType;
        if (ReadsTexts(function) && argument.sort == Argument::CONSTANT && !type.empty() && type != "string") {
            return Refusal{260153, "Invalid value: '" + type + "' of attribute 'dataType' in 'Constant'."};
        }
    }
    if (function.takes == Takes::MEANS_AND_VARIANCES) {
        return Refusal{260221, "Error occurred in process '" + ListedWord(function.number) + "'."};
    }
    return std::nullopt;
}

Outcome FieldOutcome(const ListedFunction& function, const Argument& argument, const ScoreDictVar& target) {
    if (argument.sort != Argument::FIELD) {
        return Refusal{260174, "Require 'FieldRef' in 'Apply'."};
    }
    if (function.takes == Takes::NUMERIC_FIELD && argument.type != 0) {
        return Refusal{260245, "Type mismatch between function '" + ListedWord(function.number) +
                                   "' and parameter variable '" + argument.name + "'."};
    }
    if (function.takes == Takes::TARGET_FIELD && argument.type != target.GetVarType()) {
        return Refusal{260215, "Conflict definition between the reference variable 'z' and the variable '" +
                                   std::string(argument.name) + "'."};
    }
    return std::nullopt;
}

bool IsNumber(const ListedFunction& function, const Argument& argument) {
    if (argument.sort == Argument::FIELD) {
        return argument.type == 0;
    }
    return !ReadsTexts(function) && std::string(argument.name) == "Constant_D_";
}

Outcome KindOutcome(const ListedFunction& function, const Argument& argument, bool needsNumber) {
    const std::string word = ListedWord(function.number);
    if (argument.sort == Argument::NESTED) {
        if (MayNest(function.number, argument.function)) {
            return std::nullopt;
        }
        return Refusal{260243, "Type mismatch between parent function '" + word + "' and child function '" +
                                   ListedWord(argument.function) + "'."};
    }
    if (IsNumber(function, argument) == needsNumber) {
        return std::nullopt;
    }
    const bool isText = argument.sort == Argument::CONSTANT && ReadsTexts(function);
    return Refusal{260245, "Type mismatch between function '" + word + "' and parameter variable '" +
                               (isText ? "Constant_S_" : argument.name) + "'."};
}

Outcome Expected(const ListedFunction& function, const Arguments& arguments, const ScoreDictVar& target) {
    if (const Outcome outcome = ReadingOutcome(function, arguments)) {
        return outcome;
    }
    if (function.count == kUncheckedCount) {
        return std::nullopt;
    }
    if (function.count != kAnyCount && arguments.size() != static_cast<std::size_t>(function.count)) {
        return Refusal{260173, "Require '" + std::to_string(function.count) + "' parameters."};
    }
    if (function.takes == Takes::ANYTHING) {
        return std::nullopt;
    }
    if (function.takes == Takes::TARGET_FIELD || function.takes == Takes::NUMERIC_FIELD) {
        return FieldOutcome(function, arguments.front(), target);
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool isNumber = function.takes == Takes::NUMBERS || (function.takes == Takes::TEXT_THEN_NUMBERS && i > 0);
        if (const Outcome outcome = KindOutcome(function, arguments[i], isNumber)) {
            return outcome;
        }
    }
    return std::nullopt;
}

struct NamedFunction {
    std::string name;
    const ListedFunction* function;
};

void PrintTo(const NamedFunction& named, std::ostream* out) {
    *out << named.name;
}

std::vector<NamedFunction> AllNames() {
    std::vector<NamedFunction> all;
    for (const ListedFunction& function : ListedFunctions()) {
        for (const std::string& name : function.names) {
            all.push_back({name, &function});
        }
    }
    return all;
}

class ApplyRules : public ApplyReading, public testing::WithParamInterface<NamedFunction> {
protected:
    Outcome OutcomeOf(const xercesc::DOMElement* apply) {
        try {
            const std::unique_ptr<FunctionTree> tree(Handle(apply));
            return std::nullopt;
        } catch (const VTException& failure) {
            return Refusal{failure.GetErrorCode(), failure.ConstructMessage()};
        }
    }

    void ExpectRule(const Arguments& arguments) {
        std::string elements;
        for (const Argument& argument : arguments) {
            elements += argument.element;
        }
        const ParsedXml xml = ParseXml("<Apply function='" + GetParam().name + "'>" + elements + "</Apply>");
        EXPECT_EQ(OutcomeOf(xml.Root()), Expected(*GetParam().function, arguments, target)) << elements;
    }

    /// All combinations of kinds for this many arguments.
    void ExpectCombinations(std::size_t count, Arguments& arguments) {
        if (arguments.size() == count) {
            ExpectRule(arguments);
            return;
        }
        for (const Argument& argument : kArguments) {
            arguments.push_back(argument);
            ExpectCombinations(count, arguments);
            arguments.pop_back();
        }
    }
};

TEST_P(ApplyRules, HoldForEveryNumberOfEveryKind) {
    ExpectRule({});
    for (std::size_t count = 1; count <= 8; ++count) {
        for (const Argument& argument : kArguments) {
            ExpectRule(Arguments(count, argument));
        }
    }
}

TEST_P(ApplyRules, HoldForEveryCombinationOfKinds) {
    constexpr int kMost = 3;
    const int count = GetParam().function->count;
    Arguments arguments;
    ExpectCombinations(count >= 1 && count <= kMost ? static_cast<std::size_t>(count) : 2, arguments);
}

TEST_P(ApplyRules, HoldForTargetsOfEveryType) {
    for (const auto type : {ScoreDictVar::STRING_VAR, ScoreDictVar::DATETIME_VAR}) {
        target.SetVarType(type);
        for (const Argument& argument : kArguments) {
            ExpectRule({argument});
        }
    }
}

std::string NameOf(const testing::TestParamInfo<NamedFunction>& info) {
    std::string name = std::to_string(info.param.function->number) + "_" + info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Functions, ApplyRules, testing::ValuesIn(AllNames()), NameOf);

/// Checks one argument as VerifyOneElem does.
struct OneElementRow {
    const char* name;
    const char* argument;
    bool isConstant;
    bool isNumber;
};

class OneElement : public ApplyReading, public testing::WithParamInterface<OneElementRow> {};

TEST_P(OneElement, IsANumberOrNot) {
    const OneElementRow& row = GetParam();
    const auto verify = [&](bool expectNumeric) {
        translator.VerifyOneElem(TransformationDictionary::TF_ABS, expectNumeric, row.isConstant, row.argument,
                                 dictionary.get(), nullptr);
    };
    EXPECT_NO_THROW(verify(row.isNumber));
    ExpectFailure([&] { verify(!row.isNumber); }, {Message::FUNCTION_PARAMETER_TYPE_MISMATCH, "abs", row.argument});
}

INSTANTIATE_TEST_SUITE_P(Rows, OneElement,
                         testing::Values(OneElementRow{"NumericField", "x", false, true},
                                         OneElementRow{"TextField", "s", false, false},
                                         OneElementRow{"DateField", "d", false, false},
                                         OneElementRow{"UnknownFieldCountsAsANumber", "q", false, true},
                                         OneElementRow{"Number", "Constant_D_", true, true},
                                         OneElementRow{"Text", "Constant_S_", true, false},
                                         OneElementRow{"Date", "Constant_T_", true, false},
                                         OneElementRow{"ShortName", "Constant_", true, false},
                                         OneElementRow{"FieldNamedLikeAConstant", "Constant_S_", false, true}),
                         NameOfRow());

} // namespace
} // namespace veltrane::tests
