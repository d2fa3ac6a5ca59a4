#include "recording.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

/// A plug-in that tells how many models were being built at once. Each call waits for others to come, for a while.

using namespace veltrane::tests::recording;

namespace {

std::mutex mutex;
std::condition_variable changed;
int active = 0;
int mostActive = 0;
int expected = 0;
int patience = 0;

class OverlapTranslator : public BaseTranslator {
public:
    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override {
        std::unique_lock lock(mutex);
        mostActive = std::max(mostActive, ++active);
        changed.notify_all();
        changed.wait_for(lock, std::chrono::milliseconds(patience), [] { return mostActive >= expected; });
        --active;
        return new RecordingModel(Lines{{"plugin", "OverlapModel"}});
    }
};

} // namespace

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new OverlapTranslator;
}

/// Makes each call wait until this many have been under way at once, or for this many milliseconds.
VELTRANE_API void Expect(int calls, int milliseconds) {
    const std::scoped_lock lock(mutex);
    expected = calls;
    patience = milliseconds;
}

VELTRANE_API int MostActive() {
    const std::scoped_lock lock(mutex);
    return mostActive;
}
}
