#ifndef VELTRANE_PLUGINS_KIT_DERIVED_FIELDS_H
#define VELTRANE_PLUGINS_KIT_DERIVED_FIELDS_H

#include "kit/expressions/expression_reader.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// The fields behind the derived ones.
class DataScope {
public:
    virtual ~DataScope() = default;

    /// @return none for a name that there is no field of
    virtual std::optional<FieldScope::Found> FindData(const std::string& name) = 0;

    /// Whether the document has such a field, though it can't be referred to here.
    virtual bool IsClosed(const std::string& name) const = 0;

    /// Has a field computed that no derived field of this model is.
    virtual void NeedData(int /*slot*/) {}
};

/// The derived fields of a document: compiled when the document is read, computed case by case into the fields of a
/// frame. Only those that are needed are computed, each before those that refer to it.
class DerivedFields {
public:
    /// Both are borrowed for the life of this object.
    DerivedFields(FrameLayout& layout, DataScope& data) : fLayout(layout), fData(data), fFunctions(&fOwnFunctions) {}

    /// Those of a model that is a part of another one, whose functions it calls. All are borrowed.
    DerivedFields(DataScope& data, DerivedFields& outer)
        : fLayout(outer.fLayout), fData(data), fFunctions(outer.fFunctions) {}

    DerivedFields(const DerivedFields&) = delete;
    DerivedFields& operator=(const DerivedFields&) = delete;

    /// Takes note of the DerivedFields and DefineFunctions among an element's children.
    /// @throws VTException 260120 and 260285 for a name, 260203 for one that comes twice
    void Add(const Element& parent);

    /// Adds the only expression among an element's children as a field without a name, which nothing can refer to and
    /// which is computed for every case. After Read().
    /// @param type of its values
    /// @return its slot
    /// @throws VTException as ExpressionReader tells; 260125 and 260161 for a reference
    int AddUnnamed(const Element& parent, DataType type);

    /// Reads the expressions of all, and looks for what is wrong in the functions that nothing calls. What fails throws
    /// as ExpressionReader tells, and 260297 for fields that refer to one another in a circle, 260125 for a reference
    /// to a field that isn't there.
    void Read();

    /// A derived field, or a data field for a name that no derived field has.
    /// @return none for a name of neither
    std::optional<FieldScope::Found> Find(const std::string& name);

    /// A derived field alone.
    std::optional<FieldScope::Found> FindDerived(const std::string& name);

    /// Whether a slot is that of a derived field.
    bool Has(int slot) const { return fPlaces.count(slot) > 0; }

    /// The same for an attribute.
    /// @throws VTException 260120, 260285; 260161 for a field that can't be referred to, 260125 for one that isn't
    /// there
    FieldScope::Found Require(const Element& element, const XMLCh* attribute);

    /// Has a derived field computed from now on, and those that it refers to.
    /// @throws VTException 260161 when it refers to a field that can't be referred to
    void Need(int slot);
    void NeedAll();

    /// To be called when all is needed that will be, before the first case.
    void Settle();

    /// Whether none has a name.
    bool IsEmpty() const { return fNames.empty(); }

    /// Whether there are none, without a name either.
    bool HasNone() const { return fFields.empty(); }
    std::vector<std::string> Names() const;

    /// Of the derived field of a slot; empty for one without a name.
    const std::string& NameOf(int slot) const { return FieldAt(slot).name; }
    std::optional<DataType> TypeOf(int slot) const { return FieldAt(slot).type; }

    /// The values that an ordinal derived field lists, in their order.
    std::vector<Value> ListedOf(int slot) const;

    /// The slot of each, in the order of the document.
    std::vector<int> Slots() const;

    /// The slots of the data fields that a derived field reads, itself or through others, in the order in which they
    /// are met.
    std::vector<int> DataSlotsOf(int slot) const;

    /// Computes those that are needed.
    void Compute(Frame& frame) const;

    /// Computes those that are needed for the rows of a block, from the data fields in it, and takes the rows for those
    /// that a Lag looks back on later. Gives what Compute() and Frame::EndCase() give for each row, bit for bit.
    void Compute(Block& block) const;

    /// The same row by row.
    void ComputeByRows(Block& block) const;

    /// Whether something else than the field itself is computed from a field.
    bool ComputeFrom(int slot) const;

    /// Whether values depend on the cases before.
    bool LookBack() const { return !fLayout.histories.empty(); }

    /// Reads an expression that isn't a derived field's, with the fields of this document and others before them.
    /// @param scope    where fields are looked up
    /// @param parent   of the expression
    ExpressionPtr ReadExpression(FieldScope& scope, const Element& parent, std::optional<DataType> type);

private:
    enum class State { UNREAD, BEING_READ, READ };
    /// A field that is referred to, and where.
    struct Reference {
        std::string name;
        std::string element;
        std::string attribute;
    };
    struct Field {
        std::string name;
        Element element;
        std::optional<DataType> type;
        int slot;
        State state = State::UNREAD;
        ExpressionPtr expression;
        std::vector<int> slots; ///< that its expression refers to
        std::vector<OwnedValue> listed;
        OrderPtr order;   ///< of these, where they are texts
        Reference closed; ///< the first one to a field that it can't refer to
        bool isNeeded = false;
    };
    class Scope;

    const Field& FieldAt(int slot) const { return *fFields[fPlaces.at(slot)]; }
    Field* FieldOf(const std::string& name);
    void ReadField(Field& field);
    static void ReadListed(Field& field);
    static void ComputeField(const Field& field, Block& block);

    FrameLayout& fLayout;
    DataScope& fData;
    DefinedFunctions fOwnFunctions;
    DefinedFunctions* fFunctions;                ///< those of the whole document
    std::vector<std::unique_ptr<Field>> fFields; ///< in the order of the document; parts by the thousand have none
    std::map<std::string, std::size_t, std::less<>> fNames;
    std::map<int, std::size_t> fPlaces; ///< by slot
    std::vector<const Field*> fOrder;   ///< each behind those that it refers to
    std::vector<const Field*> fNeeded;  ///< of these, what is computed
};

} // namespace veltrane_kit

#endif
