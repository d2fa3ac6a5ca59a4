#include "calls.h"

#include "support/folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fstream>

namespace veltrane::tests {

namespace {

DataType TypeOfResult(const Function& function, const std::vector<Value>& arguments) {
    switch (function.result) {
    case Function::Result::INTEGER:
        return DataType::INTEGER;
    case Function::Result::TRUTH:
        return DataType::BOOLEAN;
    case Function::Result::TEXT:
        return DataType::STRING;
    case Function::Result::SAME_KIND:
        return std::all_of(arguments.begin(), arguments.end(),
                           [](const Value& value) { return value.type == DataType::INTEGER; })
                   ? DataType::INTEGER
                   : DataType::DOUBLE;
    default:
        return DataType::DOUBLE;
    }
}

double RunKernel(const Function& function, const std::vector<double>& numbers) {
    return function.ofOne != nullptr   ? function.ofOne(numbers[0])
           : function.ofTwo != nullptr ? function.ofTwo(numbers[0], numbers[1])
                                       : function.ofMany(numbers.data(), numbers.size());
}

std::string Unescaped(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            plain += text[at];
            continue;
        }
        ++at;
        plain += text[at] == 't' ? '\t' : text[at] == 'n' ? '\n' : text[at] == 'r' ? '\r' : text[at];
    }
    return plain;
}

} // namespace

Value Call(const Function& function, std::vector<Value> arguments, Place& place) {
    const Value missing = veltrane_kit::MakeMissing(TypeOfResult(function, arguments));
    const auto isMissing = [](const Value& value) { return value.isMissing; };
    if (function.missing == Function::Missing::IS_SKIPPED) {
        arguments.erase(std::remove_if(arguments.begin(), arguments.end(), isMissing), arguments.end());
        if (arguments.empty()) {
            return missing;
        }
    }
    if (function.missing == Function::Missing::GIVES_MISSING &&
        std::any_of(arguments.begin(), arguments.end(), isMissing)) {
        return missing;
    }
    if (function.ofValues != nullptr) {
        FunctionCall call{arguments.data(), arguments.size(), place.text, place.memory, place.encoding};
        return function.ofValues(call);
    }
    std::vector<double> numbers;
    for (const Value& argument : arguments) {
        numbers.push_back(veltrane_kit::NumberOf(argument));
        if (std::isnan(numbers.back())) {
            return missing;
        }
    }
    return veltrane_kit::MakeNumber(RunKernel(function, numbers), TypeOfResult(function, arguments));
}

const Function& StandardFunction(std::string_view name) {
    const Function* const function = veltrane_kit::StandardFunctions().Find(name);
    if (function == nullptr) {
        ADD_FAILURE() << "no function " << name;
        return veltrane_kit::StandardFunctions().All().front();
    }
    return *function;
}

Value Call(std::string_view name, const std::vector<Value>& arguments) {
    static Place place;
    place = Place();
    return Call(StandardFunction(name), arguments, place);
}

Value ReadCell(std::string_view cell) {
    if (cell == "missing") {
        return {};
    }
    constexpr std::string_view kInvalid = "invalid:";
    if (cell.starts_with(kInvalid)) {
        Value value = ReadCell(cell.substr(kInvalid.size()));
        value.isInvalid = true;
        return value;
    }
    const std::size_t colon = cell.find(':');
    const std::string_view word = cell.substr(0, colon);
    const std::string_view text = cell.substr(colon + 1);
    for (int type = 0; type <= static_cast<int>(DataType::DATE_TIME_SECONDS_SINCE_1980); ++type) {
        const auto wanted = static_cast<DataType>(type);
        if (veltrane_kit::WordOf(wanted) == word) {
            return wanted == DataType::DOUBLE ? Number(std::strtod(std::string(text).c_str(), nullptr))
                                              : veltrane_kit::ReadValue(text, wanted);
        }
    }
    ADD_FAILURE() << "no value: " << cell;
    return {};
}

std::string WriteCell(const Value& value) {
    if (value.isMissing) {
        return "missing";
    }
    std::string buffer;
    const bool isExact = value.type == DataType::DOUBLE;
    char digits[64];
    const std::string_view text =
        isExact
            ? std::string_view(digits, static_cast<std::size_t>(
                                           std::to_chars(digits, digits + sizeof digits, value.number).ptr - digits))
            : veltrane_kit::TextOf(value, buffer);
    return (value.isInvalid ? "invalid:" : "") + std::string(veltrane_kit::WordOf(value.type)) + ":" +
           std::string(text);
}

std::vector<std::vector<std::string>> ReadTable(const std::string& name) {
    std::ifstream file(TestsFolder() + "/models/functions/" + name);
    std::vector<std::vector<std::string>> table;
    for (std::string line; std::getline(file, line);) {
        auto& row = table.emplace_back();
        for (std::size_t begin = 0; begin <= line.size();) {
            const std::size_t end = std::min(line.find('\t', begin), line.size());
            row.push_back(Unescaped(line.substr(begin, end - begin)));
            begin = end + 1;
        }
    }
    EXPECT_FALSE(table.empty()) << name;
    return table;
}

} // namespace veltrane::tests
