#ifndef VELTRANE_PLUGINS_KIT_TARGET_H
#define VELTRANE_PLUGINS_KIT_TARGET_H

#include "kit/document/element.h"
#include "kit/inputs/data_field.h"
#include "kit/inputs/value_codes.h"
#include "kit/results/prediction.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// Has the level that a Target states over that of its field be the field's.
/// @param dictionary that of the data, as it was read
/// @throws VTException 260153 for a level that the field's type doesn't have, 260124 for a field that isn't there
void TakeTargetLevels(const Element& model, MCVeltrane_900::ScoreDictionary& dictionary);

/// The Target of a field, that without a field for an empty name, or no element.
Element FindTarget(const Element& model, const std::string& field);

/// The target of a model: its categories with codes from 0, those that the dictionary lists first, or the adjustment of
/// a predicted number. Categories are the same where their values are, texts with all their blanks.
class Target {
public:
    /// A field of the document. Where it lists values there are no other categories.
    /// @param var the target in the data dictionary; borrowed
    Target(const MCVeltrane_900::ScoreDictVar& var, const DataField& field);

    /// The target of a model whose document has no field for it, a text for a classification, else a number; its name
    /// is empty.
    /// @param element the Target without a field; may be no element
    /// @throws VTException 260214 for a level that doesn't suit the function
    Target(const Element& element, bool classification);

    /// Reads the adjustment of predicted numbers, what people see in place of values, and what is predicted for a case
    /// that can't be scored.
    /// @param element the Target of this target; may be no element
    /// @throws VTException 260153 and 260285 for an attribute, 260203 for a value that comes twice
    void Read(const Element& element);

    const std::string& Name() const { return fName; }
    const MCVeltrane_900::ScoreDictVar& Var() const { return *fVar; }
    DataType Type() const { return fType; }
    /// Whether no field of the document holds the target.
    bool IsOwn() const { return fOwn != nullptr; }

    /// The code of a category that the model mentions, a new one where the dictionary lists none.
    /// @throws VTException 260120 for an absent attribute; 260153 for a category that isn't in the dictionary's list,
    ///         or is no value of the target's kind
    int CategoryOf(const Element& element, const XMLCh* attribute);

    /// The code of a category of a model that is a part of this one; a new one where the dictionary lists none.
    /// @return ValueCodes::kUnknown for one that isn't in the dictionary's list, or can't have the target's type
    int CategoryOf(const Target& part, int code);

    /// The code of the category that a text writes, a new one where the dictionary lists none.
    /// @return ValueCodes::kUnknown for a text that is none
    int CategoryOf(std::string_view text);

    /// Has people see a text in place of a category, where nothing else says what they do.
    void ShowAs(int code, const std::string& label);

    /// Makes a value a category, where the dictionary lists none.
    void Learn(const MCVeltrane_900::ScoreValue& value);

    int CategoryCount() const { return static_cast<int>(fCategories.size()); }
    const MCVeltrane_900::ScoreValue& Category(int code) const { return *At(code).host; }
    const Value& CategoryValue(int code) const { return At(code).typed.value; }

    /// What people see in place of a category: the display value of the Target, else that of the dictionary, else the
    /// value itself with all its digits.
    const std::string& Label(int code) const { return At(code).label; }

    /// The code of a value; ValueCodes::kUnknown for none.
    int Find(const MCVeltrane_900::ScoreValue& value) const;

    /// What is predicted for a case that can't be scored: the category with the highest prior probability, the first
    /// among equals, or the default value. A category without a prior has no share.
    /// @param prediction cleared; filled unless there is no default
    bool PredictDefault(bool classification, Prediction& prediction) const;

    /// The number that is reported for a predicted one: held within the bounds, rescaled, made a whole number.
    double Adjust(double number) const;

private:
    enum class Cast { NONE, ROUND, CEILING, FLOOR };

    struct Known {
        OwnedValue typed;
        std::unique_ptr<MCVeltrane_900::ScoreValue> host;
        std::string label;
        double prior = Prediction::kNone;
    };

    const Known& At(int code) const { return fCategories[static_cast<std::size_t>(code)]; }
    void AddListed(const DataField& field);
    void ReadAdjustment(const Element& element);
    int ReadTargetValue(const Element& element);
    int Add(const Value& value);
    std::unique_ptr<MCVeltrane_900::ScoreValue> HostValueOf(const Value& value) const;
    int MostProbable() const;

    std::string fName;
    std::unique_ptr<MCVeltrane_900::DictVar> fOwn; ///< stands for a field that the document doesn't have
    const MCVeltrane_900::ScoreDictVar* fVar;
    DataType fType;
    ValueCodes fCodes;
    std::vector<Known> fCategories;
    bool fIsListed = false; ///< whether the dictionary lists the categories
    std::optional<double> fDefault;
    bool fAdjusts = false;
    std::optional<double> fMin;
    std::optional<double> fMax;
    double fFactor = 1.0;
    double fConstant = 0.0;
    Cast fCast = Cast::NONE;
};

} // namespace veltrane_kit

#endif
