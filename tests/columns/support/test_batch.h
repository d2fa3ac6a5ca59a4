#ifndef VELTRANE_TESTS_COLUMNS_TEST_BATCH_H
#define VELTRANE_TESTS_COLUMNS_TEST_BATCH_H

#include <veltrane/arrow.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane::tests {

/// What a column is made of: its buffers as bytes, of which none may be there.
struct TestColumn {
    using Buffer = std::optional<std::string>;

    std::string name;
    std::string format;
    std::int64_t length = 0;
    std::int64_t nulls = 0;
    std::int64_t offset = 0;
    std::vector<Buffer> buffers;
    std::shared_ptr<TestColumn> dictionary;
};

/// Bits, one for each.
std::string BitsOf(const std::vector<bool>& bits);

template <typename Number>
std::string BytesOf(const std::vector<Number>& numbers) {
    std::string bytes(numbers.size() * sizeof(Number), '\0');
    if (!numbers.empty()) {
        std::memcpy(bytes.data(), numbers.data(), bytes.size());
    }
    return bytes;
}

/// A column of numbers.
/// @param there which rows aren't null; empty for all
template <typename Number>
TestColumn Numbers(std::string name, std::string format, const std::vector<Number>& numbers,
                   const std::vector<bool>& there = {}) {
    std::int64_t nulls = 0;
    for (const bool one : there) {
        nulls += one ? 0 : 1;
    }
    const TestColumn::Buffer validity = there.empty() ? TestColumn::Buffer() : BitsOf(there);
    return {std::move(name),
            std::move(format),
            static_cast<std::int64_t>(numbers.size()),
            nulls,
            0,
            {validity, BytesOf(numbers)},
            nullptr};
}

inline TestColumn Doubles(std::string name, const std::vector<double>& numbers, const std::vector<bool>& there = {}) {
    return Numbers<double>(std::move(name), "g", numbers, there);
}

using TestTexts = std::vector<std::optional<std::string>>;

/// A column of texts: "u", "z" or "U", "Z" by offsets, "vu", "vz" by views with two blocks.
TestColumn Texts(std::string name, std::string format, const TestTexts& texts);

/// A column of booleans.
TestColumn Truths(std::string name, const std::vector<bool>& truths, const std::vector<bool>& there = {});

/// A column of nothing but nulls.
TestColumn Nothing(std::string name, std::int64_t length);

/// Codes with their dictionary.
TestColumn Encoded(TestColumn codes, TestColumn dictionary);

/// Columns as a struct of the interface. A test may change the structs before it hands them over.
class TestBatch {
public:
    explicit TestBatch(const std::vector<TestColumn>& columns, std::optional<std::int64_t> rows = std::nullopt);
    TestBatch(const TestBatch&) = delete;
    TestBatch& operator=(const TestBatch&) = delete;

    ArrowSchema schema{};
    ArrowArray array{};
    int released = 0; ///< how often the array's callback was called
    int schemaReleased = 0;

    ArrowArray& Child(std::size_t at) { return *array.children[at]; }
    ArrowSchema& ChildSchema(std::size_t at) { return *schema.children[at]; }

private:
    struct Node {
        TestColumn column;
        ArrowSchema schema{};
        ArrowArray array{};
        std::vector<const void*> buffers;
        std::unique_ptr<Node> dictionary;
    };
    static std::unique_ptr<Node> MakeNode(const TestColumn& column);

    std::vector<std::unique_ptr<Node>> fNodes;
    std::vector<ArrowSchema*> fSchemas;
    std::vector<ArrowArray*> fArrays;
    const void* fNoValidity[1] = {nullptr};
};

/// What a call gives back, released at the end.
struct TestResults {
    TestResults() = default;
    ~TestResults();
    TestResults(const TestResults&) = delete;
    TestResults& operator=(const TestResults&) = delete;

    ArrowArray array{};
    ArrowSchema schema{};

    /// The place of a column, -1 for none.
    int PlaceOf(const std::string& name) const;
    std::string FormatOf(const std::string& name) const;

    /// The cells of a column as texts: numbers with all their digits, "null" for a null.
    std::vector<std::string> Cells(const std::string& name) const;
};

/// A number with all its digits.
std::string Digits(double number);

} // namespace veltrane::tests

#endif
