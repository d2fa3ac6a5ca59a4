#ifndef VELTRANE_PLATFORM_PLATFORM_H
#define VELTRANE_PLATFORM_PLATFORM_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>

/// Everything that differs between operating systems. posix.cpp and windows.cpp each implement all of it; nothing else
/// in the library names an operating system.
namespace veltrane::platform {

/// The suffix of a shared library's file name, with its dot. The plug-in file name rule and its tests use this one.
extern const char* const kSharedLibrarySuffix;

/// The separator between a folder and a file name.
extern const char kPathSeparator;

/// The folder of this library, with the separator at its end; empty when it isn't known.
const std::string& LibraryFolder();

/// Opens a shared library by file name with the system's own search. A bare name is searched for beside this library
/// and in its folder veltrane/ first. Opening the same file again gives the same module; modules are never closed.
/// @param fileName file name or path, in the system's encoding
/// @param error    0 on success, else the system's error number (never 0 on failure)
/// @param errorText empty on success, else the system's text
/// @return the module, or null
void* OpenSharedLibrary(const std::string& fileName, int& error, std::string& errorText);

/// Finds an exported C symbol by its exact name; null, with the system's text, when it is not there.
void* FindSymbol(void* module, const std::string& symbol, std::string& errorText);

/// A recursive mutex without time limit.
class RecursiveMutex {
public:
    RecursiveMutex();
    ~RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;
    void lock();
    void unlock();

private:
    struct State;
    std::unique_ptr<State> state;
};

int ProcessId();

/// A number that tells the threads of this process apart.
unsigned long ThreadId();

/// Local time, to the millisecond.
struct LocalTime {
    unsigned short year, month, day, hour, minute, second, millisecond;
};
LocalTime Now();

/// Makes a folder; a failure (it is there already) is ignored.
void MakeDirectory(const std::string& name);

/// Reads a decimal number as atof does, but with the point as decimal sign under every locale. Overflow gives an
/// infinity, text without a number 0.
double ReadDouble(const char* text);

using ByteSet = std::array<bool, 256>;

/// Which of the 256 bytes begin a character of several bytes in the code page of the calling thread's locale. Under the
/// C locale and in single-byte code pages none does.
/// @return the set, valid in this thread until its next call under another locale
const ByteSet& LeadBytes();

/// The name of the C locale's encoding where it is one of its own: empty for the plain C locale, and on a system whose
/// code page doesn't depend on the locale.
std::string LocaleEncoding();

/// Sets a variable of the process's environment, over an older value.
void SetEnvironment(const char* name, const char* value);

/// ln |Gamma(x)| without a trace in global state, as the C library's lgamma leaves one in signgam.
double LogGamma(double x);

} // namespace veltrane::platform

#endif
