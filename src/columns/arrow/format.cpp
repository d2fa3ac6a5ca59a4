#include "columns/arrow/format.h"

#include "columns/fields/field_types.h"

namespace veltrane::columns {

namespace {

constexpr std::int64_t kMilli = 1'000;
constexpr std::int64_t kMicro = 1'000'000;
constexpr std::int64_t kNano = 1'000'000'000;

struct KnownFormat {
    std::string_view text;
    ColumnFormat format;
    bool hasZone = false; ///< whether any time zone may follow
};

constexpr KnownFormat kFormats[] = {
    {"n", {Family::NULLS, Storage::NONE}},
    {"b", {Family::BOOLEAN, Storage::BITS}},
    {"c", {Family::NUMBER, Storage::INT8}},
    {"C", {Family::NUMBER, Storage::UINT8}},
    {"s", {Family::NUMBER, Storage::INT16}},
    {"S", {Family::NUMBER, Storage::UINT16}},
    {"i", {Family::NUMBER, Storage::INT32}},
    {"I", {Family::NUMBER, Storage::UINT32}},
    {"l", {Family::NUMBER, Storage::INT64}},
    {"L", {Family::NUMBER, Storage::UINT64}},
    {"e", {Family::NUMBER, Storage::FLOAT16}},
    {"f", {Family::NUMBER, Storage::FLOAT32}},
    {"g", {Family::NUMBER, Storage::FLOAT64}},
    {"u", {Family::TEXT, Storage::OFFSETS32}},
    {"U", {Family::TEXT, Storage::OFFSETS64}},
    {"vu", {Family::TEXT, Storage::VIEWS}},
    {"z", {Family::BYTES, Storage::OFFSETS32}},
    {"Z", {Family::BYTES, Storage::OFFSETS64}},
    {"vz", {Family::BYTES, Storage::VIEWS}},
    {"tdD", {Family::DATE, Storage::INT32, 1}},
    {"tdm", {Family::DATE, Storage::INT64, static_cast<std::int64_t>(kSecondsOfDay) * kMilli}},
    {"tts", {Family::TIME, Storage::INT32, 1}},
    {"ttm", {Family::TIME, Storage::INT32, kMilli}},
    {"ttu", {Family::TIME, Storage::INT64, kMicro}},
    {"ttn", {Family::TIME, Storage::INT64, kNano}},
    {"tss:", {Family::TIMESTAMP, Storage::INT64, 1}, true},
    {"tsm:", {Family::TIMESTAMP, Storage::INT64, kMilli}, true},
    {"tsu:", {Family::TIMESTAMP, Storage::INT64, kMicro}, true},
    {"tsn:", {Family::TIMESTAMP, Storage::INT64, kNano}, true},
};

} // namespace

ColumnFormat ReadFormat(const char* text) {
    const std::string_view whole = text == nullptr ? "" : text;
    for (const KnownFormat& known : kFormats) {
        if (known.hasZone ? whole.starts_with(known.text) : whole == known.text) {
            return known.format;
        }
    }
    return {};
}

bool Takes(DataType type, const ColumnFormat& format, bool isUtf8) {
    const bool keepsNumber = IsNumber(type) || type == DataType::BOOLEAN;
    const bool isDay = type == DataType::DATE || CountsDays(type);
    const bool isMoment = type == DataType::DATE_TIME || CountsSecondsSinceAYear(type);
    switch (format.family) {
    case Family::NULLS:
        return true;
    case Family::BOOLEAN:
        return keepsNumber || type == DataType::STRING;
    case Family::NUMBER:
        return keepsNumber || IsCounting(type);
    case Family::TEXT:
        return type == DataType::STRING && isUtf8;
    case Family::BYTES:
        return type == DataType::STRING && !isUtf8;
    case Family::DATE:
    case Family::TIMESTAMP:
        return isDay || isMoment;
    case Family::TIME:
        return type == DataType::TIME || type == DataType::TIME_SECONDS;
    default:
        return false;
    }
}

const char* FormatOf(DataType type, bool isUtf8) {
    switch (type) {
    case DataType::STRING:
        return isUtf8 ? "u" : "z";
    case DataType::BOOLEAN:
        return "b";
    case DataType::INTEGER:
        return "l";
    case DataType::DATE:
        return "tdD";
    case DataType::TIME:
        return "ttu";
    case DataType::DATE_TIME:
        return "tsu:";
    default:
        return "g";
    }
}

} // namespace veltrane::columns
