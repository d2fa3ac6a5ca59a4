#ifndef VELTRANE_COLUMNS_ARROW_SCHEMAS_H
#define VELTRANE_COLUMNS_ARROW_SCHEMAS_H

#include "columns/arrow/result_column.h"

namespace veltrane::columns {

/// The schema of a struct of columns.
Held<ArrowSchema> SchemaOf(const std::vector<ResultFormat>& formats);

/// The same for columns that are read, each in its field's own type.
Held<ArrowSchema> SchemaOf(const std::vector<ColumnField>& fields, bool isUtf8);

} // namespace veltrane::columns

#endif
