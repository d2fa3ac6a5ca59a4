#include "factory/entries/model_names.h"

#include "diagnostics/raise.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace veltrane::factory {

namespace {

constexpr const char* kDefaultFile = "modeldll.txt";
constexpr const char* kDelimiters = " ,\t\n";
constexpr std::streamsize kLineBuffer = 32767;

void AppendNames(std::string_view line, std::vector<std::string>& names) {
    std::size_t start = line.find_first_not_of(kDelimiters);
    while (start != std::string_view::npos) {
        const std::size_t end = line.find_first_of(kDelimiters, start);
        names.emplace_back(line.substr(start, end == std::string_view::npos ? end : end - start));
        start = line.find_first_not_of(kDelimiters, end);
    }
}

} // namespace

bool OpenForReading(std::ifstream& stream, const std::string& path, std::ios::openmode mode) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return false;
    }
    stream.open(path, mode);
    return stream.is_open();
}

void ReadModelNames(const std::string& file, std::vector<std::string>& names) {
    names.clear();
    const std::string path = file.empty() ? kDefaultFile : file;
    std::ifstream stream;
    if (!OpenForReading(stream, path, std::ios::in)) {
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_FILE>(path);
    }
    std::vector<char> buffer(kLineBuffer);
    while (stream.good()) {
        stream.getline(buffer.data(), kLineBuffer);
        if (stream.gcount() > 0) {
            // A NUL ends the line's text.
            AppendNames(buffer.data(), names);
        }
    }
}

} // namespace veltrane::factory
