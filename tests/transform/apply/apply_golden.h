#ifndef VELTRANE_TESTS_TRANSFORM_APPLY_GOLDEN_H
#define VELTRANE_TESTS_TRANSFORM_APPLY_GOLDEN_H

#include "support/golden_tables.h"

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veltrane::tests {

/// The tables of the built-in functions of Apply, each named after the enumerator of its function.
const GoldenFolder& BuiltInTables();

/// A built-in function of numbers or dates that gives a number.
struct BuiltIn {
    std::string table;   ///< the enumerator without its prefix, in lower case
    std::string literal; ///< as a document calls it

    /// The public function that Apply computes with; null where there is none of this kind.
    double (*direct)(const std::vector<double>& arguments);
};

/// Shows a function in the names of tests.
void PrintTo(const BuiltIn& function, std::ostream* out);

/// All of them, from the table of built-in functions.
const std::vector<BuiltIn>& NumericBuiltIns();

/// The derived fields of documents that apply one function to fields, one document for each number of arguments.
class AppliedToFields {
public:
    explicit AppliedToFields(const BuiltIn& function);
    ~AppliedToFields();

    /// The value of a field that has been evaluated before.
    double Value(const std::vector<double>& arguments);

    /// The value of a field's very first case, which is evaluated another way than those that follow.
    double FirstValue(const std::vector<double>& arguments);

private:
    class Document;
    Document& WithArguments(const std::vector<double>& arguments);

    std::string fLiteral;
    std::map<std::size_t, std::unique_ptr<Document>> fDocuments;
};

} // namespace veltrane::tests

#endif
