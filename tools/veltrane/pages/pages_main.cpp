// Writes the man page and the completions into a folder, each under the name by which it is installed.
#include "command_pages.h"
#include "run/options.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

using namespace veltrane::host;

std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file || text.empty()) {
        throw std::runtime_error(path + " cannot be read");
    }
    return text;
}

void Write(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        throw std::runtime_error(path + " cannot be written");
    }
}

/// Puts parts in the places that a template has for them: lines `@NAME@`.
std::string Filled(std::string page, const PageParts& parts) {
    for (const auto& [name, part] : parts) {
        const std::string holder = "\n@" + name + "@\n";
        const std::size_t place = page.find(holder);
        if (place == page.npos) {
            throw std::runtime_error("a template has no place for " + name);
        }
        page.replace(place, holder.size(), "\n" + part + "\n");
    }
    return page;
}

void WritePages(const CLI::App& app, const std::string& templates, const std::string& folder, const std::string& date) {
    Write(folder + "/veltrane.1", ManPage(app, date));
    Write(folder + "/veltrane.bash", Filled(Read(templates + "/completion.bash.in"), BashParts(app)));
    Write(folder + "/_veltrane", Filled(Read(templates + "/completion.zsh.in"), ZshParts(app)));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("veltrane_pages TEMPLATES FOLDER DATE\n", stderr);
        return 2;
    }
    try {
        WithCommandLine([&](const CLI::App& app) { WritePages(app, argv[1], argv[2], argv[3]); });
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "veltrane_pages: %s\n", failure.what());
        return 1;
    }
    return 0;
}
