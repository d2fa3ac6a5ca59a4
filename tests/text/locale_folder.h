#ifndef VELTRANE_TESTS_TEXT_LOCALE_FOLDER_H
#define VELTRANE_TESTS_TEXT_LOCALE_FOLDER_H

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace veltrane::tests {

/// A folder of locales of the test's own. Its path goes into the environment variable LOCPATH: from then on only these
/// are installed for this process and its children, beside the C library's own "C" and "C.UTF-8". A child finds the
/// folder of its parent and adds nothing to it.
class LocaleFolder {
public:
    LocaleFolder() {
        if (std::getenv("LOCPATH") != nullptr) {
            return;
        }
        std::string path = std::filesystem::temp_directory_path() / "veltrane-locales-XXXXXX";
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("no folder for locales");
        }
        fPath = path;
        setenv("LOCPATH", path.c_str(), 1);
    }
    ~LocaleFolder() {
        if (!fPath.empty()) {
            std::filesystem::remove_all(fPath);
            unsetenv("LOCPATH");
        }
    }
    LocaleFolder(const LocaleFolder&) = delete;
    LocaleFolder& operator=(const LocaleFolder&) = delete;

    /// Makes a locale under a name, from the sources of a language with an encoding.
    LocaleFolder& Add(const std::string& name, const std::string& language, const std::string& encoding) {
        if (fPath.empty()) {
            return *this;
        }
        const std::string command = "localedef --no-archive -i " + language + " -f " + encoding + " " +
                                    (fPath / name).string() + " 2>/dev/null";
        if (std::system(command.c_str()) != 0) {
            throw std::runtime_error("no locale by: " + command);
        }
        return *this;
    }

private:
    std::filesystem::path fPath;
};

} // namespace veltrane::tests

#endif
