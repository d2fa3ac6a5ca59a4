#ifndef VELTRANE_PLUGINS_KIT_TARGET_H
#define VELTRANE_PLUGINS_KIT_TARGET_H

#include "kit/document/categories.h"
#include "kit/document/element.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What a document tells of a target that is no field of it: the Target without a field of a model whose mining schema
/// names none.
struct OwnTarget {
    std::unique_ptr<MCVeltrane_900::DictVar> var; ///< a text for a classification, else a number
    Element element;                              ///< taken out of Targets; no element when there is none
};

/// Reads the Target without a field, and takes it out of the model's Targets, which then holds those of fields alone.
/// @param translator reads its values
/// @throws VTException 260272 for two of them, and what reading targets throws
OwnTarget TakeOwnTarget(const Element& model, bool classification, MCVeltrane_900::PMMLTranslator& translator);

/// Looks at the Targets of a model before the library reads them into the dictionary. A level that a Target states over
/// that of its field becomes the field's; of several default values the first one comes first, as the library takes it.
/// @param dictionary that of the data, as it was read
/// @throws VTException 260153 for a level that the field's type doesn't have
void PrepareTargets(const Element& model, bool classification, MCVeltrane_900::ScoreDictionary& dictionary);

/// Whether a field lists its values. To be asked before Targets is read into the dictionary, which adds those that a
/// Target has something to say of: they need not be all.
bool ListsValues(const MCVeltrane_900::ScoreDictVar& var);

/// The Target of a field, or no element.
Element FindTarget(const Element& model, const std::string& field);

/// The target of a model: its categories with codes from 0, those that the dictionary lists first, or the adjustment of
/// a predicted number.
class Target {
public:
    /// A field of the document.
    /// @param name     the target's name
    /// @param var      the target in the data dictionary, when Targets has been read into it; borrowed
    /// @param isListed whether the dictionary lists its categories, so that there are no others
    Target(std::string name, const MCVeltrane_900::ScoreDictVar& var, bool isListed);

    /// The target of a model whose document has no field for it; its name is empty.
    explicit Target(OwnTarget own);

    /// Reads the adjustment of predicted numbers, and what people see in place of values.
    /// @param element the Target of this target; may be no element
    /// @throws VTException 260153 and 260285 for an attribute
    void Read(const Element& element);

    const std::string& Name() const { return fName; }
    const MCVeltrane_900::ScoreDictVar& Var() const { return *fVar; }
    /// Whether no field of the document holds the target.
    bool IsOwn() const { return fOwn != nullptr; }

    /// The code of a category that the model mentions, a new one where the dictionary lists none.
    /// @throws VTException 260120 for an absent attribute; 260153 for a category that isn't in the dictionary's list,
    ///         or is no value of the target's kind
    int CategoryOf(const Element& element, const XMLCh* attribute);

    /// The same for a text; Categories::kUnknown in place of a failure.
    int CategoryOf(const std::string& text);

    int CategoryCount() const { return static_cast<int>(fValues.size()); }
    const MCVeltrane_900::ScoreValue& Category(int code) const { return *fValues[static_cast<std::size_t>(code)]; }

    /// What people see in place of a category: the display value of the Target, else that of the dictionary, else the
    /// value itself with all its digits.
    const std::string& Label(int code) const { return fLabels[static_cast<std::size_t>(code)]; }

    /// The code of a value; Categories::kUnknown for none.
    int Find(const MCVeltrane_900::ScoreValue& value) const { return fCategories.Find(value); }

    /// The number that is reported for a predicted one: held within the bounds, rescaled, made a whole number.
    double Adjust(double number) const;

private:
    enum class Cast { NONE, ROUND, CEILING, FLOOR };

    void AddListed();
    void ReadAdjustment(const Element& element);
    void ReadLabels(const Element& element);
    int Add(const MCVeltrane_900::ScoreValue& value);

    std::string fName;
    std::unique_ptr<MCVeltrane_900::DictVar> fOwn; ///< stands for a field that the document doesn't have
    const MCVeltrane_900::ScoreDictVar* fVar;
    Categories fCategories;
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> fValues;
    std::vector<std::string> fLabels;
    bool fIsListed = false; ///< whether the dictionary lists the categories
    bool fAdjusts = false;
    std::optional<double> fMin;
    std::optional<double> fMax;
    double fFactor = 1.0;
    double fConstant = 0.0;
    Cast fCast = Cast::NONE;
};

} // namespace veltrane_kit

#endif
