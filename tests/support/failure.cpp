#include "support/failure.h"

#include <optional>

namespace veltrane::tests {

namespace {

std::optional<MCVeltrane_900::VTException> Catch(const std::function<void()>& action) {
    try {
        action();
    } catch (const MCVeltrane_900::VTException& failure) {
        return failure;
    } catch (const std::exception& other) {
        ADD_FAILURE() << "expected a VTException, got: " << other.what();
        return std::nullopt;
    } catch (...) {
        ADD_FAILURE() << "expected a VTException, got another exception";
        return std::nullopt;
    }
    ADD_FAILURE() << "expected a VTException, got none";
    return std::nullopt;
}

} // namespace

void ExpectFailure(const std::function<void()>& action, int id, const std::string& text, const char* file, int line) {
    const testing::ScopedTrace trace(file, line, "ExpectFailure");
    if (const auto failure = Catch(action)) {
        EXPECT_EQ(failure->GetErrorCode(), id);
        EXPECT_EQ(failure->ConstructMessage(), text);
    }
}

void ExpectFailureWithDetail(const std::function<void()>& action, int id, const std::string& text,
                             const std::string& detail, const char* file, int line) {
    const testing::ScopedTrace trace(file, line, "ExpectFailureWithDetail");
    if (const auto failure = Catch(action)) {
        EXPECT_EQ(failure->GetErrorCode(), id);
        EXPECT_EQ(failure->ConstructMessage(), text);
        EXPECT_EQ(failure->GetDetailMessage(), detail);
    }
}

} // namespace veltrane::tests
