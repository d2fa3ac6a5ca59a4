#include "platform/platform.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <ctype.h>
#include <direct.h>
#include <locale.h>
#include <process.h>
#include <windows.h>

namespace veltrane::platform {

const char* const kSharedLibrarySuffix = ".dll";
const char kPathSeparator = '\\';

namespace {

std::string SystemText(DWORD error) {
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;
    constexpr DWORD kDefaultLanguage = 1024;
    char* buffer = nullptr;
    FormatMessageA(kFlags, nullptr, error, kDefaultLanguage, reinterpret_cast<char*>(&buffer), 0, nullptr);
    std::string text = buffer != nullptr ? buffer : "";
    LocalFree(buffer);
    return text;
}

} // namespace

const std::string& LibraryFolder() {
    static const std::string folder = [] {
        constexpr DWORD kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        HMODULE self = nullptr;
        char path[MAX_PATH] = "";
        if (GetModuleHandleExA(kFlags, &kPathSeparator, &self) != 0) {
            GetModuleFileNameA(self, path, MAX_PATH);
        }
        const std::string whole = path;
        return whole.substr(0, whole.find_last_of(kPathSeparator) + 1);
    }();
    return folder;
}

void* OpenSharedLibrary(const std::string& fileName, int& error, std::string& errorText) {
    error = 0;
    errorText.clear();
    HMODULE module = LoadLibraryA(fileName.c_str());
    if (module == nullptr) {
        error = static_cast<int>(GetLastError());
        errorText = SystemText(static_cast<DWORD>(error));
    }
    return module;
}

void* FindSymbol(void* module, const std::string& symbol, std::string& errorText) {
    errorText.clear();
    FARPROC address = GetProcAddress(static_cast<HMODULE>(module), symbol.c_str());
    if (address == nullptr) {
        errorText = SystemText(GetLastError());
    }
    return reinterpret_cast<void*>(address);
}

struct RecursiveMutex::State {
    HANDLE handle = CreateMutexA(nullptr, FALSE, nullptr);
    ~State() { CloseHandle(handle); }
};

RecursiveMutex::RecursiveMutex() : state(std::make_unique<State>()) {}
RecursiveMutex::~RecursiveMutex() = default;
void RecursiveMutex::lock() {
    WaitForSingleObject(state->handle, INFINITE);
}
void RecursiveMutex::unlock() {
    ReleaseMutex(state->handle);
}

int ProcessId() {
    return _getpid();
}

unsigned long ThreadId() {
    return GetCurrentThreadId();
}

LocalTime Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

void MakeDirectory(const std::string& name) {
    _mkdir(name.c_str());
}

std::string LocaleEncoding() {
    return "";
}

void SetEnvironment(const char* name, const char* value) {
    _putenv_s(name, value);
}

double ReadDouble(const char* text) {
    static const _locale_t classic = _create_locale(LC_ALL, "C");
    return _atof_l(text, classic);
}

const ByteSet& LeadBytes() {
    thread_local unsigned int codePage = 0;
    thread_local ByteSet leads{};
    if (const unsigned int current = ___lc_codepage_func(); codePage != current) {
        for (int byte = 0; byte < 256; ++byte) {
            leads[static_cast<size_t>(byte)] = isleadbyte(byte) != 0;
        }
        codePage = current;
    }
    return leads;
}

double LogGamma(double x) {
    return std::lgamma(x);
}

} // namespace veltrane::platform
