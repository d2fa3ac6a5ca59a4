#include "columns/arrow/schemas.h"

#include "columns/arrow/format.h"

namespace veltrane::columns {

namespace {

constexpr const char* kStruct = "+s";

} // namespace

Held<ArrowSchema> SchemaOf(const std::vector<ResultFormat>& formats) {
    SchemaParts parts{kStruct, {}, {}, {}};
    for (const ResultFormat& format : formats) {
        parts.children.push_back(MakeSchema({format.format, format.field.name, {}, format.DictionaryFormat()}));
    }
    return MakeSchema(std::move(parts));
}

Held<ArrowSchema> SchemaOf(const std::vector<ColumnField>& fields, bool isUtf8) {
    SchemaParts parts{kStruct, {}, {}, {}};
    for (const ColumnField& field : fields) {
        parts.children.push_back(MakeSchema({FormatOf(field.type, isUtf8), field.name, {}, {}}));
    }
    return MakeSchema(std::move(parts));
}

} // namespace veltrane::columns
