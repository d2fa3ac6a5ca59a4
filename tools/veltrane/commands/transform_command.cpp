#include "commands/case_run.h"
#include "commands/commands.h"
#include "documents/document.h"
#include "files/file_identity.h"
#include "results/result_columns.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <kit/document/field_references.h>
#include <kit/model/transformation_columns.h>
#include <kit/model/transformations.h>
#include <memory>
#include <utility>

namespace veltrane::host {
namespace {

/// The derived fields of a document, computed for each case.
class DerivedFields : public CaseResults {
public:
    explicit DerivedFields(const Document& document) : fDocument(document), fColumns(*document.derivedFields) {}

    bool Has(const std::string& name) const override { return fColumns.Has(name); }
    const char* ColumnKind() const override { return "a derived field"; }

    void GiveWayTo(const std::unordered_set<std::string>&) override {}

    std::vector<std::string> NeededFields() const override {
        return veltrane_kit::CaseFieldsOf(fDocument.derivedFields->GetDerivedVarNames(), *fDocument.derivedFields);
    }

    void WriteHeader(CsvWriter& writer) const override { fColumns.WriteHeader(writer); }

    const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) override {
        fColumns.WriteCase(*fDocument.derivedFields->GetValuesForDerivedVars(&row, fDocument.fields.get()), writer);
        return nullptr;
    }

private:
    const Document& fDocument;
    ResultColumns fColumns;
};

/// The same with the meaning of PMML.
class ComputedFields : public CaseResults {
public:
    explicit ComputedFields(std::shared_ptr<veltrane_kit::Transformations> transformations)
        : fTransformations(*transformations), fNames(fTransformations.Derived().Names()),
          fSlots(fTransformations.Derived().Slots()), fScorer(std::move(transformations)) {}

    bool Has(const std::string& name) const override {
        return std::find(fNames.begin(), fNames.end(), name) != fNames.end();
    }
    const char* ColumnKind() const override { return "a derived field"; }

    void GiveWayTo(const std::unordered_set<std::string>&) override {}

    std::vector<std::string> NeededFields() const override { return fTransformations.NeededNames(); }

    void WriteHeader(CsvWriter& writer) const override {
        for (const std::string& name : fNames) {
            writer.Text(name);
        }
    }

    const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) override {
        fTransformations.Compute(row);
        for (const int slot : fSlots) {
            WriteValue(fTransformations[slot], writer, fText);
        }
        return nullptr;
    }

    /// A field whose values are of several types gives texts in columns, and here what each value is.
    const ColumnScorer* Columns() const override {
        const veltrane_kit::DerivedFields& derived = fTransformations.Derived();
        const bool areTyped =
            std::all_of(fSlots.begin(), fSlots.end(), [&](int slot) { return derived.TypeOf(slot).has_value(); });
        return areTyped ? &fScorer : nullptr;
    }

    std::vector<DateForm> DateForms() const override {
        std::vector<DateForm> forms;
        forms.reserve(fSlots.size());
        for (const int slot : fSlots) {
            forms.push_back(DateFormOf(fTransformations.Derived().TypeOf(slot).value_or(DataType::STRING)));
        }
        return forms;
    }

private:
    veltrane_kit::Transformations& fTransformations;
    std::vector<std::string> fNames;
    std::vector<int> fSlots;
    veltrane_kit::TransformationColumns fScorer;
    std::string fText;
};

int TransformPlain(const TransformOptions& options) {
    const Document document = ReadDocument(options.document, options.encoding);
    RequireDerivedFields(document.derivedFields != nullptr, options.document);
    CaseRow row(*document.fields);
    DerivedFields derivedFields(document);
    return CaseRun(options, row, derivedFields).Run();
}

} // namespace

int RunTransform(const TransformOptions& options) {
    RefuseOutputOnInput(options.output, {options.document, options.cases});
    if (options.rejects) {
        RefuseRejectsOn(*options.rejects, options.output, {options.document, options.cases});
    }
    if (options.plain) {
        return TransformPlain(options);
    }
    const StandardFields read = ReadStandardFields(options.document, options.encoding);
    CaseRow row(read.transformations->Dictionary());
    row.KeepUnreadable();
    row.SetMissingTexts(read.missingTexts);
    ComputedFields fields(read.transformations);
    return CaseRun(options, row, fields).Run();
}

} // namespace veltrane::host
