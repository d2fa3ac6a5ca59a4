#ifndef VELTRANE_HOST_COMMAND_WORDS_H
#define VELTRANE_HOST_COMMAND_WORDS_H

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace veltrane::host {

/// What a value can be completed with.
enum class Values {
    FILES,
    MODELS, ///< those of the document on the same command line
    LISTED, ///< texts that are known beforehand
    FREE,   ///< anything: there is nothing to offer
};

/// What stands behind the name of a command: an option or a file.
struct CommandWord {
    std::vector<std::string> names; ///< with their dashes; empty for a file
    std::string value;              ///< what help calls the value of an option, or the file; empty for a flag
    std::string text;               ///< what help tells
    std::string unless;             ///< the value that holds where none is given
    bool again = false;             ///< whether it may be given more than once
    Values values = Values::FREE;

    bool TakesValue() const { return !value.empty(); }
};

/// The commands that help shows.
std::vector<const CLI::App*> Commands(const CLI::App& app);

/// The options of a command in the order of its help.
std::vector<CommandWord> Options(const CLI::App& command);

/// The files of a command in their order.
std::vector<CommandWord> Files(const CLI::App& command);

/// The texts that a value with this name is completed with.
std::vector<std::string> ListedValues(const std::string& option);

} // namespace veltrane::host

#endif
