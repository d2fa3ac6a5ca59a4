#include "platform/platform.h"

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwchar>
#include <dlfcn.h>
#include <langinfo.h>
#include <math.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace veltrane::platform {

const char* const kSharedLibrarySuffix = ".so";
const char kPathSeparator = '/';

const std::string& LibraryFolder() {
    // Found once: looking an address up walks the symbols of the library.
    static const std::string folder = [] {
        Dl_info self{};
        const std::string path = dladdr(&kPathSeparator, &self) != 0 ? self.dli_fname : "";
        return path.substr(0, path.find_last_of('/') + 1);
    }();
    return folder;
}

namespace {

/// Where a bare name lies: beside this library or in its folder veltrane/, else as the system searches. The run path
/// says the same, but a sanitizer opens libraries in this library's place, and then it doesn't count.
std::string PathOfLibrary(const std::string& fileName) {
    const std::string& folder = LibraryFolder();
    if (fileName.find('/') != std::string::npos || folder.empty()) {
        return fileName;
    }
    for (const std::string& candidate : {folder + fileName, folder + "veltrane/" + fileName}) {
        if (access(candidate.c_str(), F_OK) == 0) {
            return candidate;
        }
    }
    return fileName;
}

} // namespace

void* OpenSharedLibrary(const std::string& fileName, int& error, std::string& errorText) {
    error = 0;
    errorText.clear();
    const std::string path = PathOfLibrary(fileName);
    errno = 0;
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        error = errno != 0 ? errno : ENOENT;
        const char* text = dlerror();
        errorText = text != nullptr ? text : "";
    }
    return module;
}

void* FindSymbol(void* module, const std::string& symbol, std::string& errorText) {
    errorText.clear();
    dlerror();
    void* address = dlsym(module, symbol.c_str());
    if (const char* text = dlerror(); text != nullptr) {
        errorText = text;
        return nullptr;
    }
    return address;
}

struct RecursiveMutex::State {
    std::recursive_mutex mutex;
};

RecursiveMutex::RecursiveMutex() : state(std::make_unique<State>()) {}
RecursiveMutex::~RecursiveMutex() = default;
void RecursiveMutex::lock() {
    state->mutex.lock();
}
void RecursiveMutex::unlock() {
    state->mutex.unlock();
}

int ProcessId() {
    return static_cast<int>(getpid());
}

unsigned long ThreadId() {
    return static_cast<unsigned long>(syscall(SYS_gettid));
}

LocalTime Now() {
    timeval now{};
    gettimeofday(&now, nullptr);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    auto narrow = [](long value) { return static_cast<unsigned short>(value); };
    return {narrow(local.tm_year + 1900), narrow(local.tm_mon + 1), narrow(local.tm_mday),      narrow(local.tm_hour),
            narrow(local.tm_min),         narrow(local.tm_sec),     narrow(now.tv_usec / 1000L)};
}

void MakeDirectory(const std::string& name) {
    mkdir(name.c_str(), 0777);
}

std::string LocaleEncoding() {
    const char* locale = std::setlocale(LC_CTYPE, nullptr);
    return locale == nullptr || std::strcmp(locale, "C") == 0 ? "" : nl_langinfo(CODESET);
}

void SetEnvironment(const char* name, const char* value) {
    setenv(name, value, 1);
}

double ReadDouble(const char* text) {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, nullptr, classic);
}

const ByteSet& LeadBytes() {
    // The code set decides how the C library reads bytes, so a table stands for all locales of its code set.
    struct Table {
        std::string codeSet;
        ByteSet leads{};
    };
    thread_local Table table;
    const char* codeSet = nl_langinfo(CODESET);
    if (table.codeSet != codeSet) {
        for (std::size_t value = 0; value < table.leads.size(); ++value) {
            const char byte = static_cast<char>(value);
            std::mbstate_t state{};
            table.leads[value] = std::mbrlen(&byte, 1, &state) == static_cast<std::size_t>(-2);
        }
        table.codeSet = codeSet;
    }
    return table.leads;
}

double LogGamma(double x) {
    int sign = 0;
    return lgamma_r(x, &sign);
}

} // namespace veltrane::platform
