#ifndef VELTRANE_TESTS_COLUMNS_ECHO_H
#define VELTRANE_TESTS_COLUMNS_ECHO_H

#include "columns/support/test_batch.h"

#include <veltrane/document.h>

#include <string>

namespace veltrane::tests {

/// Options with a list of models in which the plug-ins of these tests stand beside the real ones.
DocumentOptions TestOptions();

/// A document whose plug-in gives its fields back.
/// @param fields     the DataFields
/// @param attributes of its model
std::string EchoText(const std::string& fields, const std::string& attributes = "");

/// The same, opened.
Document Echo(const std::string& fields, const std::string& attributes = "");

/// A field for it.
std::string FieldText(const std::string& name, const std::string& type, const std::string& attributes = "");

/// Scores a batch with a new state.
void Score(const Document& document, TestBatch& batch, TestResults& results);

} // namespace veltrane::tests

#endif
