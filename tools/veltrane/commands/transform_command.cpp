#include "commands/case_run.h"
#include "commands/commands.h"
#include "documents/document.h"
#include "files/file_identity.h"
#include "results/result_columns.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <kit/document/field_references.h>
#include <kit/model/transformations.h>

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
class StandardFields : public CaseResults {
public:
    explicit StandardFields(veltrane_kit::Transformations& transformations)
        : fTransformations(transformations), fNames(transformations.Derived().Names()),
          fSlots(transformations.Derived().Slots()) {}

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
            Write(fTransformations[slot], writer);
        }
        return nullptr;
    }

private:
    void Write(const veltrane_kit::Value& value, CsvWriter& writer) {
        if (value.isMissing) {
            writer.Empty();
        } else if (veltrane_kit::IsNumber(value.type) || veltrane_kit::IsCounting(value.type)) {
            writer.Number(value.number);
        } else {
            writer.Text(veltrane_kit::TextOf(value, fText));
        }
    }

    veltrane_kit::Transformations& fTransformations;
    std::vector<std::string> fNames;
    std::vector<int> fSlots;
    std::string fText;
};

int TransformPlain(const TransformOptions& options) {
    const Document document = ReadDocument(options.document, options.encoding);
    RequireDerivedFields(document, options.document);
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
    const auto transformations = ReadTransformations(options.document, options.encoding);
    CaseRow row(transformations->Dictionary());
    row.KeepUnreadable();
    StandardFields fields(*transformations);
    return CaseRun(options, row, fields).Run();
}

} // namespace veltrane::host
