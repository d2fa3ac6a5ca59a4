#ifndef VELTRANE_PLUGINS_KIT_INPUTS_H
#define VELTRANE_PLUGINS_KIT_INPUTS_H

#include "kit/document/element.h"
#include "kit/document/mining_schema.h"
#include "kit/inputs/borrowed_record.h"
#include "kit/inputs/input_field.h"
#include "kit/inputs/unscored_reason.h"
#include "kit/inputs/validity.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace veltrane_kit {

/// Everything that a model reads of a case: its input fields, treated as the mining schema says, and the derived fields
/// behind them. Each has a slot, a small number that a model keeps in place of the name:
///
///     const int slot = inputs.RequireSlot(element, u"field");   // when the model is built
///     const FieldValue& x = inputs[slot];                       // for each case
///
/// Reading a case allocates nothing and looks no name up after the first one.
class Inputs {
public:
    static constexpr int kNoSlot = -1;

    /// @param schema     how the model uses its fields
    /// @param validities what the document declares of them
    /// @param dictionary the data dictionary
    /// @param derived    the derived fields, set up; null for none. Both are borrowed for the life of this object.
    Inputs(const MiningSchema& schema, const DeclaredValidities& validities,
           const MCVeltrane_900::ScoreDictionary& dictionary, MCVeltrane_900::TransformationDictionary* derived);

    /// The slot of an active field of the mining schema or of a derived field; kNoSlot for any other name.
    int Slot(const std::string& name);

    /// The slot of the field that an attribute names.
    /// @throws VTException 260120, 260285 for the attribute; 260161 for a field that the mining schema doesn't make
    ///         active, 260125 for a field that the document doesn't have
    int RequireSlot(const Element& element, const XMLCh* attribute);

    const MCVeltrane_900::ScoreDictVar& Var(int slot) const { return *SourceOf(slot).var; }

    /// Whether the slot's values are numbers or date-times, so that FieldValue::number holds them.
    bool IsNumeric(int slot) const;

    /// Tells which fields, derived ones too, hold truth values as texts.
    void SetBooleans(std::set<std::string> names) { fBooleans = std::move(names); }

    /// Whether the slot's values are truth values as texts.
    bool IsBoolean(int slot) const { return fBooleans.count(SourceOf(slot).name) > 0; }

    /// The code of a category that the model mentions: FieldValue::category of the cases that have it.
    /// @throws VTException 260120 for an absent attribute, 260153 for one that is no value of the field's kind
    int CategoryOf(int slot, const Element& element, const XMLCh* attribute);

    /// The same for a text, from an array for one.
    /// @return the code; Categories::kUnknown when the text is no value of the field's kind
    int CategoryOf(int slot, const std::string& text);

    /// Has the target's own value read from each case from now on, for outputs that compare with it.
    /// @return its slot; kNoSlot when the model has no target
    int WatchTarget();

    /// The names of the input fields, in the order of the mining schema.
    const std::vector<std::string>& Names() const { return fNames; }

    /// Those that a case has to hold: a field of a single value that stands in for a missing one can be left out.
    std::vector<std::string> NeededNames() const;

    /// Reads a case and computes its derived fields.
    ///
    /// The positions of the fields are looked up in the first case, and again when the size of the record changes: all
    /// records of one size have to have the same layout. A debug build looks, and refuses a record of another one.
    /// @return false for a case with a value that the mining schema refuses
    bool Read(const MCVeltrane_900::ScoreCaseRecord& record);

    /// Why the case that was read last is not scored: for the first value that the mining schema refuses, else for the
    /// slot that the model lacks. What a derived field lacks is the first missing field of those that it reads. The
    /// case has to be there still.
    /// @param lacking the slot without which the model predicts nothing; kNoSlot for none
    UnscoredReason WhyUnscored(int lacking);

    /// Whether the case that was read last was refused for its layout. It has no default prediction: the host is wrong.
    bool HasOtherLayout() const { return fMoved != nullptr; }

    const FieldValue& operator[](int slot) const { return fValues[static_cast<std::size_t>(slot)]; }

    /// The case as the derived fields saw it, with the values of all input fields, and the derived values.
    const BorrowedRecord& Record() const { return fRecord; }
    const MCVeltrane_900::ScoreCaseRecord* DerivedRecord() const { return fDerivedRecord; }
    const MCVeltrane_900::ScoreDictionary& Dictionary() const { return fDictionary; }
    const MCVeltrane_900::TransformationDictionary* Derived() const { return fDerived; }

private:
    /// A field that is read from the case, or a derived field, which has no treatment.
    struct Source {
        std::string name;
        const MCVeltrane_900::ScoreDictVar* var;
        std::unique_ptr<InputField> field;      ///< null for a derived field
        std::unique_ptr<Categories> categories; ///< of a derived field that codes are asked of
        bool holdsText;
        bool holdsNumber; ///< neither for a date-time
        int slot;
        int position;       ///< in the case, or among the derived values; -1 when it isn't there
        int recordPosition; ///< in the record that the derived fields see
    };
    struct Explanations;

    Source MakeSource(const std::string& name, const MiningField* schema, const DeclaredValidities& validities);
    int AddDerived(const std::string& name, const MCVeltrane_900::ScoreDictVar& var);
    Source& SourceOf(int slot);
    const Source& SourceOf(int slot) const;
    void FindPositions(const MCVeltrane_900::ScoreCaseRecord& record);
    const Source* FindMoved(const MCVeltrane_900::ScoreCaseRecord& record) const;
    bool ReadInputs(const MCVeltrane_900::ScoreCaseRecord& record);
    const MCVeltrane_900::ScoreValue* RawValueOf(const Source& source) const;
    UnscoredReason WhyInputLacks(const Source& source) const;
    UnscoredReason WhyDerivedLacks(const Source& source);
    void ReadDerived();
    static void ReadDerivedValue(const MCVeltrane_900::ScoreValue* value, const Source& source, FieldValue& field);

    const MCVeltrane_900::ScoreDictionary& fDictionary;
    MCVeltrane_900::TransformationDictionary* fDerived;
    std::vector<Source> fInputs;
    std::vector<Source> fDerivedFields;
    /// By slot, where its source is: the place among the inputs, or -1 less that among the derived fields.
    std::vector<int> fPlaces;
    std::vector<FieldValue> fValues; ///< by slot: of inputs, of the target, of derived fields as they are asked for
    std::map<std::string, int, std::less<>> fSlots;
    std::vector<std::string> fNames;
    std::set<std::string> fBooleans;
    Source fTarget{};
    bool fTargetWatched = false;
    BorrowedRecord fRecord;
    const MCVeltrane_900::ScoreCaseRecord* fDerivedRecord = nullptr;
    int fLayoutSize = -1;
    const MCVeltrane_900::ScoreCaseRecord* fCase = nullptr; ///< that was read last, for as long as it is scored
    const Source* fMoved = nullptr;                         ///< of it, a field at another position; debug builds look
    const Source* fRefused = nullptr;                       ///< of it, the first field whose value is refused
    std::shared_ptr<Explanations> fExplanations;            ///< made with the first one
};

} // namespace veltrane_kit

#endif
