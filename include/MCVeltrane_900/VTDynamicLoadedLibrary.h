#ifndef MCVELTRANE_900_VT_DYNAMIC_LOADED_LIBRARY_H
#define MCVELTRANE_900_VT_DYNAMIC_LOADED_LIBRARY_H

#include <veltrane_export.h>

#include <string>

namespace MCVeltrane_900 {

/// One plug-in library, opened when its first symbol is asked for.
///
/// A library once opened stays in the process to its end, since the models and translators that it made run its code;
/// the destructor closes nothing. Opening the same file again gives the same module.
class VELTRANE_API VTDynamicLoadedLibrary {
public:
    /// Opens nothing yet.
    explicit VTDynamicLoadedLibrary(const std::string& fileName);
    ~VTDynamicLoadedLibrary();

    /// Opens the library unless it is open.
    /// @return 0, or the operating system's error number
    int Load();

    /// Opens the library if need be and finds an exported C symbol by its exact name.
    /// @return its address, or null when the library can't be opened or lacks it
    void* GetSymbolAddress(const std::string& symbol);

    /// The operating system's text for what the last call of the two above could not do; empty where it could.
    const std::string& GetErrorText() const { return fErrorText; }

    /// The file name of a library: the name itself when it is longer than the system's suffix for shared libraries and
    /// ends in it, in whatever case; else the name with the suffix appended.
    static std::string MakeLibraryFileName(const std::string& name);

private:
    void* fModule = nullptr;
    std::string fFileName;
    std::string fErrorText;
};

} // namespace MCVeltrane_900

#endif
