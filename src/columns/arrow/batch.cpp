#include "columns/arrow/batch.h"

#include "diagnostics/raise.h"

#include <string_view>
#include <unordered_map>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

/// What the array of all columns is called in messages.
constexpr const char* kColumns = "columns";

void CheckWhole(const ArrowArray* array, const ArrowSchema* schema) {
    if (array == nullptr) {
        Raise<Message::NULL_ARGUMENT>("array");
    }
    if (schema == nullptr) {
        Raise<Message::NULL_ARGUMENT>("schema");
    }
    if (array->release == nullptr) {
        Raise<Message::RELEASED_STRUCT>("array", kColumns);
    }
    if (schema->release == nullptr) {
        Raise<Message::RELEASED_STRUCT>("schema", kColumns);
    }
    const std::string_view format = schema->format == nullptr ? "" : schema->format;
    if (format != "+s" || schema->dictionary != nullptr) {
        Raise<Message::NO_STRUCT_OF_COLUMNS>(format);
    }
    CheckCount(kColumns, "children", array->n_children, schema->n_children);
    CheckCount(kColumns, "buffers", array->n_buffers, 1);
    CheckLength(kColumns, *array, kMostRows);
    if (array->buffers == nullptr && array->length > 0) {
        Raise<Message::MISSING_PART>(kColumns, "buffers");
    }
    const bool hasChildren = array->children != nullptr && schema->children != nullptr;
    if (schema->n_children < 0 || (schema->n_children > 0 && !hasChildren)) {
        Raise<Message::MISSING_PART>(kColumns, "children");
    }
}

/// The columns of the fields, by the field. Their names are all there is to the others.
using Places = std::unordered_map<std::string_view, std::size_t>;

std::vector<std::int64_t> FindColumns(const ArrowSchema& schema, const std::vector<ColumnField>& fields) {
    constexpr std::int64_t kNone = -1;
    Places places;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        places.emplace(fields[field].name, field);
    }
    std::vector<std::int64_t> columns(fields.size(), kNone);
    for (std::int64_t at = 0; at < schema.n_children; ++at) {
        const ArrowSchema* column = schema.children[at];
        if (column == nullptr) {
            Raise<Message::MISSING_PART>(std::to_string(at), "schema");
        }
        if (column->release == nullptr) {
            Raise<Message::RELEASED_STRUCT>("schema", std::to_string(at));
        }
        const auto place = places.find(column->name == nullptr ? "" : column->name);
        if (place == places.end()) {
            continue;
        }
        if (columns[place->second] != kNone) {
            Raise<Message::COLUMN_TWICE>(place->first);
        }
        columns[place->second] = at;
    }
    for (std::size_t field = 0; field < fields.size(); ++field) {
        if (columns[field] == kNone && fields[field].isNeeded) {
            Raise<Message::COLUMN_MISSING>(fields[field].name);
        }
    }
    return columns;
}

} // namespace

Batch::Batch(const ArrowArray* array, const ArrowSchema* schema, const std::vector<ColumnField>& fields, bool isUtf8)
    : fReaders(fields.size()) {
    CheckWhole(array, schema);
    const std::vector<std::int64_t> columns = FindColumns(*schema, fields);
    for (std::size_t field = 0; field < fields.size(); ++field) {
        if (columns[field] >= 0) {
            CheckType(fields[field], *schema->children[columns[field]], isUtf8);
        }
    }
    const auto first = static_cast<std::size_t>(array->offset);
    fRows = static_cast<std::size_t>(array->length);
    const columns::Rows rows{first, fRows, ValidityOf(kColumns, *array, first)};
    for (std::size_t field = 0; field < fields.size(); ++field) {
        if (columns[field] < 0) {
            continue;
        }
        const ArrowArray* column = array->children[columns[field]];
        if (column == nullptr) {
            Raise<Message::MISSING_PART>(fields[field].name, "array");
        }
        fReaders[field].emplace(fields[field], *schema->children[columns[field]], *column, rows);
    }
}

void Batch::Begin(std::vector<ColumnRoom>& rooms) {
    for (std::size_t field = 0; field < fReaders.size(); ++field) {
        if (fReaders[field]) {
            fReaders[field]->Begin(rooms[field]);
        }
    }
}

void Batch::Read(std::size_t row, std::size_t count, std::vector<InputColumn>& columns) {
    for (std::size_t field = 0; field < fReaders.size(); ++field) {
        if (fReaders[field]) {
            fReaders[field]->Read(row, count, columns[field]);
        } else {
            columns[field] = InputColumn();
        }
    }
}

} // namespace veltrane::columns
