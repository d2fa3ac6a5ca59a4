#include "support/faults/failure.h"

#include "support/faults/catalogue.h"

#include <optional>
#include <vector>

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

void Expect(const MCVeltrane_900::VTException& failure, int id, const std::string& text) {
    EXPECT_EQ(failure.GetErrorCode(), id);
    EXPECT_EQ(failure.ConstructMessage(), text);
}

} // namespace

std::string Failure::Text() const {
    std::vector<std::string> given;
    for (const char* parameter : parameters) {
        if (parameter != nullptr) {
            given.emplace_back(parameter);
        }
    }
    return CataloguedText(static_cast<int>(message), given);
}

void ExpectFailure(const std::function<void()>& action, const Failure& failure, const char* file, int line) {
    ExpectFailure(action, static_cast<int>(failure.message), failure.Text(), file, line);
}

void ExpectFailure(const std::function<void()>& action, int id, const std::string& text, const char* file, int line) {
    const testing::ScopedTrace trace(file, line, "ExpectFailure");
    if (const auto failure = Catch(action)) {
        Expect(*failure, id, text);
    }
}

void ExpectFailureWithDetail(const std::function<void()>& action, const Failure& failure, const std::string& detail,
                             const char* file, int line) {
    ExpectFailureWithDetail(action, static_cast<int>(failure.message), failure.Text(), detail, file, line);
}

void ExpectFailureWithDetail(const std::function<void()>& action, int id, const std::string& text,
                             const std::string& detail, const char* file, int line) {
    const testing::ScopedTrace trace(file, line, "ExpectFailureWithDetail");
    if (const auto failure = Catch(action)) {
        Expect(*failure, id, text);
        EXPECT_EQ(failure->GetDetailMessage(), detail);
    }
}

} // namespace veltrane::tests
