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
#include <veltrane/column_scorer.h>

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

class InputState;

/// Everything that a model reads of a case: its input fields, treated as the mining schema says, and the derived fields
/// behind them. Each has a slot, a small number that a model keeps in place of the name:
///
///     const int slot = inputs.RequireSlot(element, u"field");   // when the model is built
///     const FieldValue& x = fields[slot];                       // for each case, in its view
///
/// It grows while a model is built, up to Settle(), and doesn't change from then on: threads share it, and what a case
/// writes stands in an InputState of each. Reading a case allocates nothing but for texts that functions make, and
/// looks no name up after the first one.
class Inputs : private DataScope {
public:
    static constexpr int kNoSlot = -1;

    /// @param schema     how the model uses its fields
    /// @param fields     of the data dictionary; borrowed for the life of this object
    /// @param dictionary the data dictionary as the library has it; borrowed
    /// @param encoding   of all texts
    Inputs(const MiningSchema& schema, const DataFields& fields, const MCVeltrane_900::ScoreDictionary& dictionary,
           const std::string& encoding);
    /// Those of a model that is a part of another one. It stands on the fields that the outer model has treated and
    /// derived: what it takes as it is has the slot that it has there, and what it treats or derives itself has one of
    /// its own in the same frame.
    /// @param dictionary the data dictionary as the part has it; borrowed
    /// @param outer      borrowed for the life of this object; to be settled behind it
    /// @param seesAll    whether fields of the outer model needn't stand in the schema
    Inputs(const MiningSchema& schema, const MCVeltrane_900::ScoreDictionary& dictionary, Inputs& outer,
           bool seesAll = false);
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

    /// Has the own value of a target read from each case from now on, for outputs that compare with it.
    /// @param name one of the model's targets
    /// @return its slot; kNoSlot for a name that is none of them
    int WatchTarget(const std::string& name);

    /// The names of the input fields, in the order of the mining schema.
    const std::vector<std::string>& Names() const { return fNames; }

    /// Those that a case has to hold: a field of a single value that stands in for a missing one can be left out.
    std::vector<std::string> NeededNames() const;

    const MCVeltrane_900::ScoreDictionary& Dictionary() const { return fDictionary; }

    /// What expressions that aren't derived fields are read and evaluated with: those of output fields.
    FrameLayout& Layout() { return fLayout; }
    const FrameLayout& Layout() const { return fLayout; }
    DerivedFields& Derived() { return fDerived; }
    const DerivedFields& Derived() const { return fDerived; }

    /// To be called once, when everything is asked for that will be. There are states from then on.
    void Settle();

    /// A field as the schema of a part of this model may name it: one of this model's schema, a derived one, what a
    /// part before it tells, or what an outer model has of these but the first.
    std::optional<FieldScope::Found> FindForPart(const std::string& name);

    /// The names of derived fields, those of outer models too, and of what parts before told.
    std::vector<std::string> NamesForPart() const;

    /// Makes a value that a part of this model tells one of the fields behind it, under a name that no field of this
    /// model has.
    /// @return the slot that has it, another one where a part before tells a value of that name and type
    int AddTold(const std::string& name, const FieldScope::Found& found);

    /// The same of what an output field of this model asks a part for; by the name of the output field.
    void AddAnswer(const std::string& output, const FieldScope::Found& found);
    std::optional<FieldScope::Found> FindAnswer(const std::string& output) const;

    /// The fields that parts tell.
    const std::vector<int>& ToldSlots() const { return fToldSlots; }

    /// Makes them missing, until parts tell them.
    void ForgetTold(Frame& frame) const;

    /// Reads the fields of a part from those of the outer model, and computes its derived fields.
    /// @return the slot of the first value that the schema refuses; kNoSlot for none
    int ReadPart(Frame& frame) const;

    /// The same for the rows of a block, unless cases look back.
    /// @param refused set to 1 for rows with a value that the schema refuses, else left alone
    void ReadPart(Block& block, std::uint8_t* refused) const;

    /// Whether a part has no fields of its own: what it reads is as the outer model has it.
    bool PassesAllOn() const { return fInputs.empty() && fDerived.HasNone(); }

    /// The slot of the outer model whose missing value is why a part has no prediction.
    /// @param lacking a slot that the part reads
    int OuterSlotOf(int lacking, const Frame& frame) const;

    /// Sets the code of one field whose value was put into the frame.
    void SetCode(int slot, Frame& frame) const;
    void SetCodes(int slot, Block& block) const;

    /// Whether a case may read values of those before it.
    bool LooksBack() const { return !fLayout.histories.empty() || fLayout.needsOrder; }

    /// Reads a case and computes its derived fields.
    ///
    /// The positions of the fields are looked up in the first case, and again when the size of the record changes: all
    /// records of one size have to have the same layout. A debug build looks, and refuses a record of another one.
    /// @return false for a case with a value that the mining schema refuses
    bool Read(const MCVeltrane_900::ScoreCaseRecord& record, InputState& state) const;

    /// What stands in columns of the cases, in the order in which ReadBlock() takes them.
    std::vector<veltrane::ColumnField> ColumnFields() const;

    /// Reads a block of cases and computes their derived fields. Where cases look back the caller does that, row by
    /// row, with Derived().Compute().
    /// @param columns of ColumnFields()
    /// @param refused set to 1 for rows with a value that the mining schema refuses, to 0 for others
    void ReadBlock(const veltrane::InputColumn* columns, Block& block, std::uint8_t* refused) const;

    /// Sets the codes of derived fields for one case.
    void SetDerivedCodes(Frame& frame) const;

    /// Why the case that was read last is not scored: for the first value that the mining schema refuses, else for the
    /// slot that the model lacks. What a derived field lacks is the first missing field of those that it reads. The
    /// case has to be there still.
    /// @param lacking the slot without which the model predicts nothing; kNoSlot for none
    UnscoredReason WhyUnscored(int lacking, InputState& state) const;

private:
    friend class InputState;

    /// A field that is read from the case.
    struct Source {
        std::string name;
        std::unique_ptr<InputField> field;
        int slot;
        OrderPtr order;     ///< of an ordinal field of texts
        int from = kNoSlot; ///< of a part, the field of the outer model that it treats
    };
    struct Explanations;

    static void SetColumnCodes(const ValueCodes& codes, int slot, Block& block);
    std::optional<FieldScope::Found> FindData(const std::string& name) override;
    bool IsClosed(const std::string& name) const override;
    void NeedData(int slot) override;
    std::optional<FieldScope::Found> FindBeyond(const std::string& name);
    std::optional<FieldScope::Found> FindTold(const std::string& name);
    void AddOwn(const MiningField& field, const FieldScope::Found& outer);
    bool TakesAsItIs(const MiningField& field, const FieldScope::Found& outer) const;
    void FindOuterSlots();

    Source MakeSource(const std::string& name, const MiningField* schema);
    const Source* SourceOf(int slot) const;
    void FindPositions(const MCVeltrane_900::ScoreCaseRecord& record, InputState& state) const;
    const Source* FindMoved(const MCVeltrane_900::ScoreCaseRecord& record, const InputState& state) const;
    bool ReadInputs(const MCVeltrane_900::ScoreCaseRecord& record, InputState& state) const;
    template <typename At>
    void ReadInputs(const At& at, InputState& state) const;
    UnscoredReason WhyInputLacks(const Source& source, const InputState& state) const;
    UnscoredReason WhyDerivedLacks(int slot, InputState& state) const;
    const MCVeltrane_900::ScoreValue* RawOf(const Source& source, const InputState& state) const;
    std::vector<Value> ListedOf(int slot) const;

    const DataFields& fFields;
    const MCVeltrane_900::ScoreDictionary& fDictionary;
    Inputs* fOuter = nullptr; ///< of a part
    bool fSeesAll = false;    ///< of the outer model's fields, whatever the schema says
    FrameLayout fOwnLayout;
    FrameLayout& fLayout; ///< that of the outermost model
    DerivedFields fDerived;
    int fFirstSlot = 0;                                            ///< of the input fields
    std::size_t fFirstHistory = 0;                                 ///< of this model and its parts
    std::list<DataField> fDefined;                                 ///< of a part, the fields that no DataField defines
    std::map<std::string, FieldScope::Found, std::less<>> fPassed; ///< of a part, the fields that it takes as they are
    std::map<std::string, FieldScope::Found, std::less<>> fTold;
    std::map<std::string, FieldScope::Found, std::less<>> fAnswers;
    std::map<int, std::optional<DataType>> fToldTypes; ///< by slot
    std::vector<int> fToldSlots;                       ///< those that are seen
    std::map<int, std::vector<int>> fOuterSlots; ///< of a part, by the slot of a derived field, what it reads beyond
    std::vector<Source> fInputs;
    std::map<std::string, std::size_t, std::less<>> fPlaces; ///< of the input fields
    std::vector<std::string> fNames;
    std::map<int, ValueCodes> fDerivedCodes; ///< by slot, of derived fields that codes are asked of
    std::map<int, std::vector<Value>> fListed;
    std::map<int, std::optional<MCVeltrane_900::ScoreDictVar::MeasureLevel>> fLevels; ///< that the schema states
    std::vector<Source> fTargets; ///< of the outermost model, the first one in front
    bool fTargetsWatched = false;
};

/// What one thread knows of the cases that it reads through Inputs.
class InputState {
public:
    /// @param inputs settled; borrowed
    explicit InputState(const Inputs& inputs);
    ~InputState();
    InputState(InputState&&) = delete;

    /// The case at hand: for the expressions of output fields, and as models read it.
    Frame& Case() { return fFrame; }
    const Frame& Case() const { return fFrame; }

    /// To be called when everything of a case is computed, while its record is still there: a Lag looks back on it.
    void EndCase() {
        if (fMoved == nullptr) {
            fFrame.EndCase();
        }
    }

    /// Whether the case that was read last was refused for its layout. It has no default prediction: the host is wrong.
    bool HasOtherLayout() const { return fMoved != nullptr; }

private:
    friend class Inputs;

    Frame fFrame;
    std::vector<int> fPositions; ///< by the slot of a field that is read from the case, in it; -1 when it isn't there
    int fLayoutSize = -1;
    const MCVeltrane_900::ScoreCaseRecord* fCase = nullptr; ///< that was read last, for as long as it is scored
    const Inputs::Source* fMoved = nullptr;                 ///< of it, a field at another position; debug builds look
    const Inputs::Source* fRefused = nullptr;               ///< of it, the first field whose value is refused
    std::unique_ptr<Inputs::Explanations> fExplanations;    ///< made with the first one
};

} // namespace veltrane_kit

#endif
