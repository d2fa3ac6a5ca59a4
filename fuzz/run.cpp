#include "run.h"

#include "factory/entries/kept_on_failure.h"

#include <MCVeltrane_900/ModelFactory.h>

namespace veltrane::fuzz {

Run::Run() {
    static const bool started = (MCVeltrane_900::ModelFactory::Initialize(""), true);
    static_cast<void>(started);
}

Run::~Run() {
    MCVeltrane_900::FreeKept();
}

void Require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

} // namespace veltrane::fuzz
