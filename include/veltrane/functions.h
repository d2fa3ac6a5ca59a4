#ifndef VELTRANE_FUNCTIONS_H
#define VELTRANE_FUNCTIONS_H

#include <veltrane/value.h>
#include <veltrane_export.h>

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace veltrane {

/// One call of a function for one case.
struct FunctionCall {
    /// What a function keeps from case to case for one place in a document, say a compiled pattern.
    class Memory {
    public:
        virtual ~Memory() = default;
    };

    const Value* arguments;
    std::size_t count;
    /// Room for a text that the function makes; its value may show it. It stays until the same place is called again.
    std::string& text;
    /// Null until the function puts something there. It belongs to one place of the document and to one thread.
    std::unique_ptr<Memory>& memory;
    /// Name of the encoding of all texts, upper case: "UTF-8", "ISO-8859-1".
    const std::string& encoding;
};

/// A function that expressions can apply, by its name. It either has a kernel over numbers, for one, two or any number
/// of them, or evaluates its arguments as values.
///
/// A kernel gets the numbers of its arguments: booleans are 1 and 0, a text is read as a number. It is not called where
/// one of them is missing or is no number. A result that is not a number is missing, so that it stands for whatever
/// lies outside the function's domain.
///
/// A function must give the same result for the same arguments, must not throw, and is called from any thread.
struct Function {
    static constexpr std::size_t kAny = static_cast<std::size_t>(-1);

    /// What arguments have to be, for the reader of documents and for people.
    enum class Arguments { NUMBERS, TEXTS, TRUTHS, MOMENTS, ANYTHING };

    /// The type of a result.
    enum class Result {
        REAL,      ///< DOUBLE
        INTEGER,   ///< INTEGER
        SAME_KIND, ///< INTEGER where all arguments are integers, else DOUBLE
        TRUTH,     ///< BOOLEAN
        TEXT,      ///< STRING
        ARGUMENT,  ///< that of one of the arguments
    };

    /// What becomes of missing arguments.
    enum class Missing {
        GIVES_MISSING, ///< the result is missing; the function isn't called
        IS_SKIPPED,    ///< the function gets the others; with none left the result is missing
        IS_PASSED,     ///< the function gets them as they are
    };

    std::string name;
    std::size_t fewest = 1; ///< arguments
    std::size_t most = 1;   ///< kAny for no bound
    Arguments arguments = Arguments::NUMBERS;
    Result result = Result::REAL;
    Missing missing = Missing::GIVES_MISSING;

    // Exactly one of these.
    double (*ofOne)(double x) = nullptr;
    double (*ofTwo)(double x, double y) = nullptr;
    double (*ofMany)(const double* numbers, std::size_t count) = nullptr;
    Value (*ofValues)(FunctionCall& call) = nullptr;

    /// The kernel for columns, beside one over numbers. It has to give the same bits. May be null: then each row is
    /// computed by itself. Not a number stands for missing, and is treated as `missing` says.
    /// @param columns one for each argument, `rows` numbers in each
    /// @param results room for `rows` numbers; it may be one of the columns
    void (*ofColumns)(const double* const* columns, std::size_t count, std::size_t rows, double* results) = nullptr;

    std::string summary;     ///< the result, for people: "the sum of two numbers"
    std::string missingRule; ///< the rule for missing arguments and for those outside the domain, for people

    int number = 0; ///< given by the library that the function is added to
};

/// Functions by name. Each has a number that tells it from the others of its library: from 1,000 on, in the order in
/// which they were added.
///
/// A library is filled before the first document is read with it; from then on it may be read from any thread.
class VELTRANE_API FunctionLibrary {
public:
    static constexpr int kFirstNumber = 1000;

    FunctionLibrary();
    ~FunctionLibrary();
    FunctionLibrary(const FunctionLibrary&) = delete;
    FunctionLibrary& operator=(const FunctionLibrary&) = delete;

    /// @param function its number is not looked at
    /// @return its number
    /// @throws VTException 260202 for a name that is there already; 260153, which names the field, for a function
    /// without
    ///         a name, without or with more than one way to evaluate it, with numbers of arguments that it can't be
    ///         called with, with a kernel that would have to get missing numbers, or with one for columns alone.
    ///         Nothing is added then
    int Add(Function function);

    /// @return null for a name that no function has; else borrowed from the library
    const Function* Find(std::string_view name) const;
    /// @return null for a number that no function has
    const Function* Find(int number) const;

    /// In the order of their numbers.
    const std::deque<Function>& All() const;

    /// The functions of the host, which every document finds behind those of PMML: add to them before the first
    /// document is read. It stays until the end of the process.
    static FunctionLibrary& OfHost();

private:
    struct Index;
    std::deque<Function> fFunctions;
    std::unique_ptr<Index> fIndex;
};

} // namespace veltrane

#endif
