#ifndef VELTRANE_PLUGINS_KIT_INPUTS_H
#define VELTRANE_PLUGINS_KIT_INPUTS_H

#include "kit/document/element.h"
#include "kit/expressions/derived_fields.h"
#include "kit/inputs/data_field.h"
#include "kit/inputs/input_field.h"
#include "kit/inputs/mining_schema.h"
#include "kit/inputs/unscored_reason.h"
#include "kit/inputs/value_codes.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// Everything that a model reads of a case: its input fields, treated as the mining schema says, and the derived fields
/// behind them. Each has a slot, a small number that a model keeps in place of the name:
///
///     const int slot = inputs.RequireSlot(element, u"field");   // when the model is built
///     const FieldValue& x = inputs[slot];                       // for each case
///
/// Reading a case allocates nothing but for texts that functions make, and looks no name up after the first one.
class Inputs : private DataScope {
public:
    static constexpr int kNoSlot = -1;

    /// @param schema     how the model uses its fields
    /// @param fields     of the data dictionary; borrowed for the life of this object
    /// @param dictionary the data dictionary as the library has it; borrowed
    /// @param encoding   of all texts
    Inputs(const MiningSchema& schema, const DataFields& fields, const MCVeltrane_900::ScoreDictionary& dictionary,
           const std::string& encoding);
    ~Inputs() override;
    Inputs(const Inputs&) = delete;
    Inputs& operator=(const Inputs&) = delete;

    /// Reads the derived fields of a document and those of its model. Once, before anything is asked.
    /// @param shared, local the elements that hold them; may be no elements
    /// @throws VTException what DerivedFields throws
    void ReadDerivedFields(const Element& shared, const Element& local);

    /// The slot of an active field of the mining schema or of a derived field; kNoSlot for any other name.
    int Slot(const std::string& name);

    /// The slot of the field that an attribute names.
    /// @throws VTException 260120, 260285 for the attribute; 260161 for a field that the mining schema doesn't make
    ///         active, 260125 for a field that the document doesn't have
    int RequireSlot(const Element& element, const XMLCh* attribute);

    const std::string& NameOf(int slot) const;

    /// The type of a slot's values; STRING where it depends on the case.
    DataType Type(int slot) const;

    /// Whether FieldValue::number holds the slot's values: numbers, dates, and booleans as 1 and 0.
    bool IsNumeric(int slot) const { return !IsText(Type(slot)); }

    /// The valid values of an ordinal field in their order; empty for any other field, and where none are listed.
    const std::vector<Value>& Listed(int slot);

    /// The value of the field's type that a text of the document writes; a missing one for a text that is none. The
    /// value's text is borrowed.
    Value ValueIn(int slot, std::string_view text) const { return ReadValue(text, Type(slot)); }

    /// The code of a category that the model mentions: FieldValue::category of the cases that have it.
    /// @throws VTException 260120 for an absent attribute, 260153 for one that is no value of the field's kind
    int CategoryOf(int slot, const Element& element, const XMLCh* attribute);

    /// The same for a text, from an array for one.
    /// @return the code; ValueCodes::kUnknown when the text is no value of the field's type
    int CategoryOf(int slot, std::string_view text);
    int CategoryOf(int slot, const Value& value);

    /// Has the target's own value read from each case from now on, for outputs that compare with it.
    /// @return its slot; kNoSlot when the model has no target
    int WatchTarget();

    /// The names of the input fields, in the order of the mining schema.
    const std::vector<std::string>& Names() const { return fNames; }

    /// Those that a case has to hold: a field of a single value that stands in for a missing one can be left out.
    std::vector<std::string> NeededNames() const;

    const MCVeltrane_900::ScoreDictionary& Dictionary() const { return fDictionary; }

    /// What expressions that aren't derived fields are read and evaluated with: those of output fields.
    FrameLayout& Layout() { return fLayout; }
    DerivedFields& Derived() { return fDerived; }
    const DerivedFields& Derived() const { return fDerived; }

    /// The case at hand, for those expressions. There is one from the first case on.
    Frame& Case() const { return *fFrame; }

    /// Reads a case and computes its derived fields.
    ///
    /// The positions of the fields are looked up in the first case, and again when the size of the record changes: all
    /// records of one size have to have the same layout. A debug build looks, and refuses a record of another one.
    /// @return false for a case with a value that the mining schema refuses
    bool Read(const MCVeltrane_900::ScoreCaseRecord& record);

    /// To be called when everything of a case is computed, while its record is still there: a Lag looks back on it.
    void EndCase() {
        if (fMoved == nullptr) {
            fFrame->EndCase();
        }
    }

    /// Why the case that was read last is not scored: for the first value that the mining schema refuses, else for the
    /// slot that the model lacks. What a derived field lacks is the first missing field of those that it reads. The
    /// case has to be there still.
    /// @param lacking the slot without which the model predicts nothing; kNoSlot for none
    UnscoredReason WhyUnscored(int lacking);

    /// Whether the case that was read last was refused for its layout. It has no default prediction: the host is wrong.
    bool HasOtherLayout() const { return fMoved != nullptr; }

    const FieldValue& operator[](int slot) const { return fSlots[slot]; }

private:
    /// A field that is read from the case.
    struct Source {
        std::string name;
        std::unique_ptr<InputField> field;
        int slot;
        int position; ///< in the case; -1 when it isn't there
    };
    struct Explanations;

    std::optional<FieldScope::Found> FindData(const std::string& name) override;
    bool IsClosed(const std::string& name) const override;

    Source MakeSource(const std::string& name, const MiningField* schema);
    const Source* SourceOf(int slot) const;
    Source* SourceOf(int slot);
    void FindPositions(const MCVeltrane_900::ScoreCaseRecord& record);
    const Source* FindMoved(const MCVeltrane_900::ScoreCaseRecord& record) const;
    bool ReadInputs(const MCVeltrane_900::ScoreCaseRecord& record);
    void Start();
    UnscoredReason WhyInputLacks(const Source& source) const;
    UnscoredReason WhyDerivedLacks(int slot);
    std::vector<Value> ListedOf(int slot) const;

    const DataFields& fFields;
    const MCVeltrane_900::ScoreDictionary& fDictionary;
    FrameLayout fLayout;
    DerivedFields fDerived;
    std::unique_ptr<Frame> fFrame; ///< made for the first case
    FieldValue* fSlots = nullptr;  ///< its fields
    std::vector<Source> fInputs;
    std::map<std::string, std::size_t, std::less<>> fPlaces; ///< of the input fields
    std::vector<std::string> fNames;
    std::map<int, ValueCodes> fDerivedCodes; ///< by slot, of derived fields that codes are asked of
    std::map<int, std::vector<Value>> fListed;
    std::map<int, std::optional<MCVeltrane_900::ScoreDictVar::MeasureLevel>> fLevels; ///< that the schema states
    Source fTarget{};
    bool fTargetWatched = false;
    int fLayoutSize = -1;
    const MCVeltrane_900::ScoreCaseRecord* fCase = nullptr; ///< that was read last, for as long as it is scored
    const Source* fMoved = nullptr;                         ///< of it, a field at another position; debug builds look
    const Source* fRefused = nullptr;                       ///< of it, the first field whose value is refused
    std::unique_ptr<Explanations> fExplanations;            ///< made with the first one
};

} // namespace veltrane_kit

#endif
