#ifndef VELTRANE_HOST_COMMAND_PAGES_H
#define VELTRANE_HOST_COMMAND_PAGES_H

#include <map>
#include <string>

namespace CLI {
class App;
}

/// What is made from the description of the command line, as its help is, so that a new option stands everywhere at
/// once.
namespace veltrane::host {

/// The man page.
/// @param date of the page, as it shows it
std::string ManPage(const CLI::App& app, const std::string& date);

/// What the place holders of a template stand for, by their names.
using PageParts = std::map<std::string, std::string>;

/// The parts of completion.bash.in: commands, options, and values that can be listed.
PageParts BashParts(const CLI::App& app);

/// The parts of completion.zsh.in, which show the texts of the help beside the words.
PageParts ZshParts(const CLI::App& app);

} // namespace veltrane::host

#endif
