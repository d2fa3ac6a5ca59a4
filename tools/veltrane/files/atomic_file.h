#ifndef VELTRANE_HOST_ATOMIC_FILE_H
#define VELTRANE_HOST_ATOMIC_FILE_H

#include "files/byte_stream.h"

#include <string>

namespace veltrane::host {

/// A file that appears whole or not at all: it is written as a hidden temporary beside its final name and takes the
/// name in `Commit`. Without `Commit`, and when SIGINT, SIGTERM or SIGHUP ends the process, the temporary is removed
/// and what stood under the name before is untouched. A device, a pipe and a file that is open already (/dev/stdout,
/// /dev/fd/3) are written to directly, since they cannot be replaced. Two such files are open at a time at most.
class AtomicFile : public ByteSink {
public:
    static constexpr std::size_t kMostAtATime = 2;

    explicit AtomicFile(const std::string& path);
    ~AtomicFile() override;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes) override;

    /// Puts the file under its final name, with its bytes on the disk. Throws a `Failure` when that cannot be done.
    void Commit();

private:
    void OpenTemporary(unsigned mode);
    [[noreturn]] void Fail() const;

    std::string fName;      ///< as the user gave it, for messages
    std::string fTarget;    ///< the final path, behind symbolic links
    std::string fTemporary; ///< empty when the target is written to directly
    int fDescriptor = -1;
};

} // namespace veltrane::host

#endif
