#include "files/atomic_file.h"

#include "files/failure.h"

#include <climits>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <initializer_list>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrane::host {
namespace {

/// A temporary's name keeps at most this much of the final name, so that it stays a valid name itself.
constexpr std::size_t kLongestKeptName = 200;

constexpr std::initializer_list<int> kEndingSignals = {SIGINT, SIGTERM, SIGHUP};

/// The temporaries that a signal has to remove; an empty text for none. The signal handler reads them, so they only
/// change while the ending signals are blocked.
using TemporaryName = std::array<char, PATH_MAX>;
std::array<TemporaryName, AtomicFile::kMostAtATime> gTemporaries{};

extern "C" void RemoveTemporariesAndEnd(int number) {
    for (const TemporaryName& temporary : gTemporaries) {
        if (temporary[0] != '\0') {
            ::unlink(temporary.data());
        }
    }
    ::signal(number, SIG_DFL);
    ::raise(number);
}

class EndingSignalsBlocked {
public:
    EndingSignalsBlocked() {
        sigset_t set;
        sigemptyset(&set);
        for (const int number : kEndingSignals) {
            sigaddset(&set, number);
        }
        ::sigprocmask(SIG_BLOCK, &set, &fBefore);
    }
    ~EndingSignalsBlocked() { ::sigprocmask(SIG_SETMASK, &fBefore, nullptr); }

private:
    sigset_t fBefore{};
};

/// A signal that the process was started with as ignored (nohup, a background job) stays ignored.
void InstallHandlers() {
    for (const int number : kEndingSignals) {
        struct sigaction action {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = RemoveTemporariesAndEnd;
        sigemptyset(&action.sa_mask);
        ::sigaction(number, &action, nullptr);
    }
}

void RememberTemporary(const std::string& path) {
    for (TemporaryName& temporary : gTemporaries) {
        if (temporary[0] != '\0') {
            continue;
        }
        const std::size_t size = std::min(path.size(), temporary.size() - 1);
        std::copy_n(path.data(), size, temporary.data());
        temporary[size] = '\0';
        return;
    }
}

void ForgetTemporary(std::string_view path) {
    for (TemporaryName& temporary : gTemporaries) {
        if (path.substr(0, temporary.size() - 1) == temporary.data()) {
            temporary[0] = '\0';
        }
    }
}

std::string BehindLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::string(resolved.get()) : path;
}

/// The number of a file that the process has open already, by the names that the system has for such files; -1 for any
/// other path. These names lead through links to the file behind them, which is not meant to be replaced.
int NumberOfOpenFile(std::string_view path) {
    if (path == "/dev/stdout") {
        return STDOUT_FILENO;
    }
    if (path == "/dev/stderr") {
        return STDERR_FILENO;
    }
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) {
            continue;
        }
        int number = -1;
        const auto [end, error] = std::from_chars(path.data() + folder.size(), path.data() + path.size(), number);
        return error == std::errc() && end == path.data() + path.size() ? number : -1;
    }
    return -1;
}

std::string TemporaryPattern(const std::string& target) {
    const std::size_t name = target.rfind('/') + 1; // npos + 1 is 0
    return target.substr(0, name) + "." + target.substr(name, kLongestKeptName) + ".XXXXXX";
}

unsigned ModeOfNewFiles() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

AtomicFile::AtomicFile(const std::string& path) : fName(path), fTarget(BehindLinks(path)) {
    const int number = NumberOfOpenFile(path);
    if (number >= 0) {
        fDescriptor = ::fcntl(number, F_DUPFD_CLOEXEC, 0);
        if (fDescriptor < 0) {
            Fail();
        }
        return;
    }
    struct stat status {};
    const bool exists = ::stat(fTarget.c_str(), &status) == 0;
    if (!exists || S_ISREG(status.st_mode)) {
        OpenTemporary(exists ? status.st_mode & 07777 : ModeOfNewFiles());
        return;
    }
    fDescriptor = ::open(fTarget.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fDescriptor < 0) {
        Fail();
    }
}

void AtomicFile::OpenTemporary(unsigned mode) {
    std::string pattern = TemporaryPattern(fTarget);
    const EndingSignalsBlocked blocked;
    fDescriptor = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (fDescriptor < 0) {
        Fail();
    }
    fTemporary = pattern;
    RememberTemporary(fTemporary);
    InstallHandlers();
    ::fchmod(fDescriptor, mode);
}

AtomicFile::~AtomicFile() {
    if (fDescriptor >= 0) {
        ::close(fDescriptor);
    }
    if (fTemporary.empty()) {
        return;
    }
    const EndingSignalsBlocked blocked;
    ::unlink(fTemporary.c_str());
    ForgetTemporary(fTemporary);
}

void AtomicFile::Write(std::string_view bytes) {
    DescriptorSink(fDescriptor, fName).Write(bytes);
}

void AtomicFile::Commit() {
    if (!fTemporary.empty() && ::fsync(fDescriptor) != 0) {
        Fail();
    }
    const int descriptor = fDescriptor;
    fDescriptor = -1;
    if (::close(descriptor) != 0) {
        Fail();
    }
    if (fTemporary.empty()) {
        return;
    }
    const EndingSignalsBlocked blocked;
    if (::rename(fTemporary.c_str(), fTarget.c_str()) != 0) {
        Fail();
    }
    ForgetTemporary(fTemporary);
    fTemporary.clear();
}

void AtomicFile::Fail() const {
    throw Failure(fName + ": " + SystemErrorText(errno));
}

} // namespace veltrane::host
