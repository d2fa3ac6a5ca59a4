#ifndef SCORECONTEXT_IERRORFORMATER_H
#define SCORECONTEXT_IERRORFORMATER_H

#include <veltrane_export.h>

#include <cstdarg>
#include <string>
#include <vector>

namespace ScoreContext {

/// One line of a message table: a message id and its pattern.
struct MessageItem {
    int id;
    /// ICU MessageFormat pattern; not owned, and never written to.
    char* text;
};

/// Makes message texts from message ids and their parameters. Parameters are bytes in the text's own encoding.
/// Nothing here throws for an unknown id or a bad pattern: the first has an empty text, the second is returned raw.
class VELTRANE_API IErrorFormater {
public:
    /// Formats `id` with as many arguments as its pattern has placeholders.
    /// @param id message id; the arguments behind it are `char const *`, and a null one ends them
    virtual std::string FormatV(int id, ...) = 0;

    /// Formats `id` with `count` arguments of a variable argument list.
    /// @param count number of `char const *` values to read; below 1 none, which gives the raw pattern
    /// @param arguments the values; a null one ends them
    virtual std::string VFormatN(int id, int count, va_list arguments) = 0;

    /// Formats `id` with the `count` arguments that follow.
    virtual std::string FormatN(int id, int count, ...) = 0;

    /// Formats `id` with these parameters. Without parameters the pattern is returned as it is stored.
    virtual std::string Format(int id, const std::vector<std::string>& parameters) = 0;

    /// @return the number of placeholders in the pattern of `id`; 0 for an unknown id
    virtual int GetParameterNumber(int id) = 0;

    /// Takes over a message table. The texts are not copied and have to outlive the formater.
    /// @param count number of lines in the table; below 1 nothing is taken over
    /// @param items the table, at least one line
    /// @return false when the first id has a text already: the table counts as loaded, and nothing changes
    virtual bool LoadMessages(int count, MessageItem* items) = 0;

protected:
    /// A formater is never deleted through this interface.
    ~IErrorFormater() = default;
};

} // namespace ScoreContext

#endif
