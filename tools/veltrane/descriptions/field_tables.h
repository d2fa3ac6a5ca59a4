#ifndef VELTRANE_HOST_FIELD_TABLES_H
#define VELTRANE_HOST_FIELD_TABLES_H

#include "run/table.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace veltrane::host {

/// Texts one behind the other, without the empty ones.
std::string Joined(const std::vector<std::string>& texts, const char* separator);

/// All that a field says of its values.
std::string ValuesText(const nlohmann::ordered_json& field);

/// A table of fields: what all fields have, then more. There is a column of labels where one of the fields is called
/// otherwise than it is named.
class FieldsTable {
public:
    /// @param more headings
    FieldsTable(const nlohmann::ordered_json& fields, const std::vector<std::string>& more);

    /// @param more cells
    void Add(const nlohmann::ordered_json& field, const std::vector<std::string>& more);

    const Table& Get() const { return fTable; }

private:
    bool fHasLabels;
    Table fTable;
};

/// The fields of a dictionary.
Table DataTable(const nlohmann::ordered_json& fields);

/// Derived fields with their formulas.
Table DerivedTable(const nlohmann::ordered_json& derivedFields);

/// The same with the kind of each expression.
Table ExpressionsTable(const nlohmann::ordered_json& derivedFields);

/// The functions that a document defines.
Table FunctionsTable(const nlohmann::ordered_json& functions);

std::string Section(const char* title, const Table& table);

} // namespace veltrane::host

#endif
