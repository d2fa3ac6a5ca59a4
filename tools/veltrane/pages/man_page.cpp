#include "command_pages.h"
#include "command_words.h"
#include "files/failure.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>

namespace veltrane::host {
namespace {

/// A text as roff takes it: hyphens that stay what they are, no escapes and no requests.
std::string Roff(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\\') {
            escaped += "\\e";
        } else if (character == '-') {
            escaped += "\\-";
        } else {
            escaped += character;
        }
    }
    const bool looksLikeARequest = !escaped.empty() && (escaped.front() == '.' || escaped.front() == '\'');
    return looksLikeARequest ? "\\&" + escaped : escaped;
}

/// A text in lines, as the habits of man pages want them; no word at the start of a line looks like a request.
std::string Lines(std::string_view text) {
    constexpr std::size_t kLongest = 76;
    std::string lines;
    std::size_t length = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        const std::string word(text.substr(start, end - start));
        start = end + 1;
        const std::string shown = Roff(word);
        const bool goesOn = length > 0 && length + 1 + shown.size() <= kLongest;
        lines += (length == 0 ? "" : goesOn ? " " : "\n") + shown;
        length = goesOn ? length + 1 + shown.size() : shown.size();
    }
    return lines;
}

std::string Bold(std::string_view text) {
    return "\\fB" + Roff(text) + "\\fR";
}

std::string Italic(std::string_view text) {
    return "\\fI" + Roff(text) + "\\fR";
}

/// An option or a file of a command, with what help tells of it.
std::string Entry(const CommandWord& word) {
    std::string head;
    for (const std::string& name : word.names) {
        head += (head.empty() ? "" : ", ") + Bold(name);
    }
    if (word.TakesValue()) {
        head += (head.empty() ? "" : " ") + Italic(word.value);
    }
    const std::string unless = word.unless.empty() ? "" : fmt::format("\n({} without it)", Bold(word.unless));
    return fmt::format(".TP\n{}\n{}{}\n", head, Lines(word.text), unless);
}

std::string Synopsis(const CLI::App& command) {
    std::string line = Bold("veltrane " + command.get_name()) + " [" + Italic("OPTION") + "]...";
    for (const CommandWord& word : Files(command)) {
        line += " " + Italic(word.value);
    }
    return line;
}

std::string CommandSection(const CLI::App& command) {
    std::string section = fmt::format(".SS {}\n{}.\n", Synopsis(command), Lines(command.get_description()));
    for (const CommandWord& word : Files(command)) {
        section += Entry(word);
    }
    for (const CommandWord& word : Options(command)) {
        section += Entry(word);
    }
    return section;
}

/// The description as the name's line has it: it goes on behind the name, and isn't a sentence.
std::string Purpose(std::string description) {
    if (description.ends_with('.')) {
        description.pop_back();
    }
    if (!description.empty() && description.front() >= 'A' && description.front() <= 'Z') {
        description.front() = static_cast<char>(description.front() - 'A' + 'a');
    }
    return description;
}

std::string ExitStatus() {
    std::string section = ".SH EXIT STATUS\n";
    for (const auto& [code, meaning] : kExitCodes) {
        section += fmt::format(".TP\n{}\n{}\n", Bold(std::to_string(code)), Lines(meaning));
    }
    return section;
}

} // namespace

std::string ManPage(const CLI::App& app, const std::string& date) {
    std::string page = fmt::format(".TH VELTRANE 1 \"{}\" \"{}\" \"User Commands\"\n.SH NAME\n{}\n", date,
                                   app.version(), Lines(app.get_name() + " - " + Purpose(app.get_description())));
    page += ".SH SYNOPSIS\n";
    for (const CLI::App* command : Commands(app)) {
        page += Synopsis(*command) + "\n.br\n";
    }
    page += Bold("veltrane") + " " + Italic("OPTION") + "\n";
    page += ".SH DESCRIPTION\n" + Lines(app.get_description()) + "\n.SH OPTIONS\n";
    for (const CommandWord& word : Options(app)) {
        page += Entry(word);
    }
    page += ".SH COMMANDS\n";
    for (const CLI::App* command : Commands(app)) {
        page += CommandSection(*command);
    }
    return page + ExitStatus();
}

} // namespace veltrane::host
