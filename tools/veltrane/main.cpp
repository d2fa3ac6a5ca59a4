#include "commands/commands.h"
#include "descriptions/functions_command.h"
#include "documents/explanation.h"
#include "files/failure.h"
#include "run/options.h"
#include "run/report.h"

#include <MCVeltrane_900/VTException.h>

#include <fmt/format.h>

#include <csignal>
#include <exception>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace {

using namespace veltrane::host;

/// Keeps the numbers of the three standard files taken where the process was started without one of them: a file that
/// is opened later must not get such a number, or messages would be written into it.
void ReserveStandardFiles() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) == -1) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

/// A write that cannot be done shall fail with an error, not end the process: the failure has a message then, and a
/// file that is half written goes away.
void LetWritesFail() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
}

void Complain(std::string_view text) {
    fmt::print(stderr, "veltrane: {}\n", Escaped(text));
}

struct Runner {
    int operator()(const TransformOptions& options) const { return RunTransform(options); }
    int operator()(const ScoreOptions& options) const { return RunScore(options); }
    int operator()(const VerifyOptions& options) const { return RunVerify(options); }
    int operator()(const InspectOptions& options) const { return RunInspect(options); }
    int operator()(const FunctionsOptions&) const { return RunFunctions(); }
    int operator()(const ModelNamesOptions& options) const { return RunModelNames(options); }
    int operator()(int exitCode) const { return exitCode; }
};

int Run(const Request& request) {
    try {
        return std::visit(Runner(), request);
    } catch (const MCVeltrane_900::VTException& error) {
        Complain(ToldText(error));
    } catch (const ExplainedFailure& failure) {
        Complain(failure.what());
        if (!failure.Explanation().empty()) {
            Complain(failure.Explanation());
        }
    } catch (const ToldFailure&) {
    } catch (const UsageFailure& failure) {
        Complain(failure.what());
        return EXIT_USAGE;
    } catch (const std::bad_alloc&) {
        Complain("not enough memory");
    } catch (const std::exception& failure) {
        Complain(failure.what());
    } catch (...) {
        Complain("a plug-in failed with something that is no exception of the library");
    }
    return EXIT_FAILED;
}

} // namespace

int main(int argc, char** argv) {
    ReserveStandardFiles();
    LetWritesFail();
    return Run(ParseCommandLine(argc, argv));
}
