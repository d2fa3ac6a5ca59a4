#include "kit/model/verification.h"

#include "kit/document/meaningless.h"
#include "kit/document/parsed_document.h"
#include "kit/document/raise.h"

#include <cmath>
#include <map>
#include <set>

namespace veltrane_kit {

namespace {

void CheckCount(const Element& element, const XMLCh* attribute, std::size_t count, const char* tag, const char* in) {
    const int declared = element.IntegerOr(attribute, static_cast<int>(count));
    if (declared != static_cast<int>(count)) {
        Raise<Message::NUMBER_MISMATCH>(std::to_string(declared), Narrow(attribute), std::to_string(count), tag, in);
    }
}

std::vector<VerificationField> ReadFields(const Element& element) {
    std::vector<VerificationField> fields;
    std::set<std::string> names;
    for (const Element child : element.Children()) {
        if (child.Is(u"Extension")) {
            continue;
        }
        if (!child.Is(u"VerificationField")) {
            child.RaiseMisplaced();
        }
        VerificationField field;
        field.field = child.Text(u"field");
        field.column = child.Has(u"column") ? child.Text(u"column") : field.field;
        field.precision = child.NumberOr(u"precision", field.precision);
        field.zeroThreshold = child.NumberOr(u"zeroThreshold", field.zeroThreshold);
        if (!names.insert(field.field).second) {
            Raise<Message::DUPLICATE_DEFINITION>("VerificationField", field.field, "VerificationFields");
        }
        fields.push_back(std::move(field));
    }
    return fields;
}

/// The fields by the tag of their cells, with its prefix and without.
using Columns = std::map<std::string, std::size_t>;

Columns ColumnsOf(const std::vector<VerificationField>& fields) {
    Columns columns;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        columns.emplace(fields[i].column, i);
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        columns.emplace(LocalName(fields[i].column), i);
    }
    return columns;
}

std::vector<std::optional<std::string>> ReadRecord(const Element& row, const Columns& columns, std::size_t size) {
    std::vector<std::optional<std::string>> record(size);
    for (const Element cell : row.Children()) {
        // In the encoding of the names, where Element::Tag has just its ASCII.
        const std::string tag = cell.Reader()(cell.Dom()->getTagName());
        auto column = columns.find(tag);
        if (column == columns.end()) {
            column = columns.find(LocalName(tag));
        }
        if (std::string text = column == columns.end() ? "" : cell.Content(); !text.empty()) {
            record[column->second] = std::move(text);
        }
    }
    return record;
}

Element FindModel(const Element& root, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (const Element child : root.Children()) {
            if (child.Is(Widen(name).c_str())) {
                return child;
            }
        }
    }
    return {};
}

} // namespace

bool VerificationField::Agrees(double expected, double actual) const {
    if (std::abs(expected) <= zeroThreshold) {
        return std::abs(actual) <= zeroThreshold;
    }
    return std::abs(actual - expected) <= precision * std::abs(expected);
}

std::optional<Verification> ReadVerification(const Element& model) {
    const Element element = model.Child(u"ModelVerification");
    if (!element) {
        return std::nullopt;
    }
    Verification verification;
    verification.fields = ReadFields(element.RequireChild(u"VerificationFields"));
    if (verification.fields.empty()) {
        Raise<Message::MISSING_NODE_IN>("VerificationField", "VerificationFields");
    }
    CheckCount(element, u"fieldCount", verification.fields.size(), "VerificationField", "VerificationFields");
    const Columns columns = ColumnsOf(verification.fields);
    for (const Element row : element.RequireChild(u"InlineTable").Children()) {
        if (row.Is(u"row")) {
            verification.records.push_back(ReadRecord(row, columns, verification.fields.size()));
        } else if (!row.Is(u"Extension")) {
            row.RaiseMisplaced();
        }
    }
    CheckCount(element, u"recordCount", verification.records.size(), "row", "InlineTable");
    return verification;
}

std::optional<Verification> ReadVerification(std::istream& in, const std::vector<std::string>& names,
                                             const std::string& encoding) {
    const ParsedDocument document(in, encoding);
    if (!document.Root()) {
        return std::nullopt;
    }
    const Element model = FindModel(document.Root(), names);
    if (!model) {
        return std::nullopt;
    }
    DropMeaningless(model);
    return ReadVerification(model);
}

} // namespace veltrane_kit
