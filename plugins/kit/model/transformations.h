#ifndef VELTRANE_PLUGINS_KIT_TRANSFORMATIONS_H
#define VELTRANE_PLUGINS_KIT_TRANSFORMATIONS_H

#include "kit/expressions/derived_fields.h"
#include "kit/inputs/input_field.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// The derived fields of a document's TransformationDictionary, with the meaning of PMML and without a model: no mining
/// schema treats the fields behind them. One thread at a time.
class Transformations : private DataScope {
public:
    /// The document has been held against the library's bounds before.
    /// @param in       at its start
    /// @param encoding of the texts; empty means BaseTranslator::DEFAULT_ENCODING
    /// @return null for a document whose root isn't PMML
    /// @throws VTException 260105 for a document that can't be read, 260115 without a DataDictionary, and what reading
    ///         data fields and derived fields throws
    static std::unique_ptr<Transformations> Read(std::istream& in, const std::string& encoding);

    ~Transformations() override;

    /// The data dictionary as the library has it.
    const MCVeltrane_900::ScoreDictionary& Dictionary() const { return *fDictionary; }
    const DerivedFields& Derived() const { return fDerived; }

    /// A data field that a derived field refers to.
    struct Source {
        std::string name;
        std::unique_ptr<InputField> field;
        int slot;
        OrderPtr order;    ///< of an ordinal field of texts
        int position = -1; ///< in the records that Compute() gets
    };

    /// In the order in which the derived fields ask for them.
    const std::vector<Source>& Sources() const { return fSources; }

    const FrameLayout& Layout() const { return fLayout; }

    /// The names of the fields that have to come from a case, in the order in which the derived fields ask for them.
    std::vector<std::string> NeededNames() const;

    /// Computes all derived fields for a case. All records have to have the same layout.
    /// @param record borrowed until the next one
    void Compute(const MCVeltrane_900::ScoreCaseRecord& record);

    /// The value of a derived field for the last case, by its slot.
    const Value& operator[](int slot) const { return fFrame->Field(slot); }

private:
    explicit Transformations(const std::string& encoding);
    std::optional<FieldScope::Found> FindData(const std::string& name) override;
    bool IsClosed(const std::string&) const override { return false; }

    DataFields fFields;
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fDictionary;
    FrameLayout fLayout;
    DerivedFields fDerived;
    std::vector<Source> fSources;               ///< by slot, those that a derived field refers to
    std::map<std::string, std::size_t> fPlaces; ///< of the sources, by name
    std::unique_ptr<Frame> fFrame;
    bool fHasCase = false;
};

} // namespace veltrane_kit

#endif
