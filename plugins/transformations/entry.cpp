#include "kit/model/transformation_columns.h"

#include <veltrane_export.h>

/// The derived fields of a document without a model, to be computed in columns with the meaning of PMML.
/// @param document at its start; it has been held against the library's bounds
/// @param encoding of the texts; empty means BaseTranslator::DEFAULT_ENCODING
/// @param version  ColumnScorer::kVersion of the host's library
/// @return owned by the caller; null for a document whose root isn't PMML, and for a version that isn't known
/// @throws VTException as Transformations::Read() does
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyTransformations(std::istream& document,
                                                                      const std::string& encoding, int version) {
    if (version != veltrane::ColumnScorer::kVersion) {
        return nullptr;
    }
    std::shared_ptr<const veltrane_kit::Transformations> read = veltrane_kit::Transformations::Read(document, encoding);
    return read == nullptr ? nullptr : new veltrane_kit::TransformationColumns(std::move(read));
}
