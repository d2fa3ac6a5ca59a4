#include "commands/case_run.h"
#include "commands/commands.h"
#include "documents/document.h"
#include "files/file_identity.h"
#include "results/result_columns.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <kit/document/field_references.h>

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

} // namespace

int RunTransform(const TransformOptions& options) {
    RefuseOutputOnInput(options.output, {options.document, options.cases});
    if (options.rejects) {
        RefuseRejectsOn(*options.rejects, options.output, {options.document, options.cases});
    }
    const Document document = ReadDocument(options.document, options.encoding);
    RequireDerivedFields(document, options.document);
    CaseRow row(*document.fields);
    DerivedFields derivedFields(document);
    return CaseRun(options, row, derivedFields).Run();
}

} // namespace veltrane::host
