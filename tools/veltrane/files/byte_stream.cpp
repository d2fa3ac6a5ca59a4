#include "files/byte_stream.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace veltrane::host {

std::string SystemErrorText(int number) {
    return std::system_category().message(number);
}

InputFile::InputFile(std::string name) : fName(std::move(name)), fDescriptor(STDIN_FILENO) {
    if (fName != "-") {
        fDescriptor = ::open(fName.c_str(), O_RDONLY | O_CLOEXEC);
        if (fDescriptor < 0) {
            throw UnreadableFile(fName + ": " + SystemErrorText(errno));
        }
    }
    struct stat status {};
    if (::fstat(fDescriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        fSize = static_cast<std::uint64_t>(status.st_size);
    }
}

InputFile::~InputFile() {
    if (fDescriptor != STDIN_FILENO) {
        ::close(fDescriptor);
    }
}

bool InputFile::IsReady() const {
    pollfd input{fDescriptor, POLLIN, 0};
    return fSize || ::poll(&input, 1, 0) > 0;
}

std::size_t InputFile::Read(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(fDescriptor, buffer, size);
        if (count >= 0) {
            fBytesRead += static_cast<std::uint64_t>(count);
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw UnreadableFile(fName + ": " + SystemErrorText(errno));
        }
    }
}

void DescriptorSink::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fDescriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw Failure(fName + ": " + SystemErrorText(errno));
        }
    }
}

} // namespace veltrane::host
