// Any bytes as the text of a number, a date or a string: reading and comparing never fails, and the checks that the
// translators make agree with the readers behind them.
#include <veltrane.h>

#include <cstddef>
#include <cstdint>
#include <string>

using namespace MCVeltrane_900;

namespace {

void Require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

void Numbers(const std::string& text) {
    const NumericValue number(text);
    number.GetInt();
    number.GetString();
    try {
        const double verified = BaseTranslator::VerifyDouble(text);
        const NumericValue again(BaseTranslator::TrimBlanks(text));
        Require(verified == again.GetDouble());
    } catch (const VTException& failure) {
        Require(failure.GetErrorCode() == 260151);
    }
    try {
        BaseTranslator::VerifyInt(text);
    } catch (const VTException& failure) {
        Require(failure.GetErrorCode() == 260151);
    }
}

void Dates(const std::string& text) {
    for (int number = 0; number <= 13; ++number) {
        const auto type = static_cast<ScoreDictVar::DateTimeType>(number);
        const DateTimeValue value(text, type);
        DateTimeValue::IsValidDateTime(text, type);
        value.GetInt();
        value.GetString();
        value.GetNumericString();
        value.ExtractYear();
        value.ExtractSecond();
    }
}

void Strings(const std::string& left, const std::string& right) {
    const StringValue a(left);
    const StringValue b(right);
    Require(a == a);
    Require((a == b) == (b == a));
    a.GetDouble();
    a.GetInt();
    static_cast<void>(a < b || a > b || a <= b || a >= b);
    ScoreCatStringEncoder encoder(2);
    const int code = encoder.Encode(left);
    Require(encoder.EncodeConst(left) == code);
    encoder.Encode(right);
    Require(encoder.EncodeConst(right) >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Numbers(text);
    Dates(text);
    Strings(text.substr(0, size / 2), text.substr(size / 2));
    return 0;
}
