#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_VIEWS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_VIEWS_H

#include "kit/columns/column.h"
#include "kit/columns/text_arena.h"

#include <veltrane/functions.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

/// Functions of texts for blocks of cases: a result is a part of an argument or stands in an arena, and nothing is
/// copied twice.
namespace veltrane_kit::standard {

/// A function of texts in UTF-8 for all rows of a block. What it gives for a row is what the function of values gives,
/// bit for bit. It never changes; threads share it.
class ViewFunction {
public:
    /// The results; the type of the function says which of them there are.
    struct Results {
        std::string_view* texts; ///< null data for a missing one
        double* numbers;
    };

    explicit ViewFunction(DataType result) : fResult(result) {}
    ViewFunction(const ViewFunction&) = delete;
    ViewFunction& operator=(const ViewFunction&) = delete;
    virtual ~ViewFunction() = default;

    DataType Result() const { return fResult; }

    /// Whether it computes anything of arguments of these types.
    virtual bool Takes(const std::vector<Column>& arguments) const;

    /// Computes the rows from one on, up to the first one that is left to the function of values.
    /// @param arguments that it takes
    /// @param arena     where texts are made; once it has no room left they are missing
    /// @return the row that is left; `rows` for none
    virtual std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows,
                                TextArena& arena, const Results& results) const = 0;

private:
    DataType fResult;
};

/// The form of a function for blocks.
/// @param function  one of values
/// @param arguments the constants among its arguments, null for others
/// @return null where it has none
std::unique_ptr<const ViewFunction> MakeViewFunction(veltrane::Value (*function)(veltrane::FunctionCall&),
                                                     const std::vector<const veltrane::Value*>& arguments);

} // namespace veltrane_kit::standard

#endif
