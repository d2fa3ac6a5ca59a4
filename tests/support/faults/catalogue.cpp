#include "support/faults/catalogue.h"

#include "support/folders.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace veltrane::tests {
namespace {

CataloguedMessage ReadLine(const std::string& line) {
    std::istringstream in(line);
    std::string columns[5];
    for (std::string& column : columns) {
        std::getline(in, column, '\t');
    }
    return {std::stoi(columns[0]), columns[1], columns[2], std::stoul(columns[3]), columns[4]};
}

std::vector<CataloguedMessage> ReadCopy() {
    std::ifstream file(TestsFolder() + "/diagnostics/messages.tsv");
    std::vector<CataloguedMessage> messages;
    std::string line;
    std::getline(file, line); // the names of the columns
    while (std::getline(file, line)) {
        messages.push_back(ReadLine(line));
    }
    if (messages.empty()) {
        throw std::runtime_error("no copy of the catalogue in " + TestsFolder());
    }
    return messages;
}

/// Puts the parameters for value0, value1 and so on. Their own texts are not looked at.
std::string Filled(const std::string& formatted, const std::vector<std::string>& parameters) {
    static const std::string kPlace = "value";
    std::string text;
    std::size_t done = 0;
    for (std::size_t at = 0; (at = formatted.find(kPlace, at)) != std::string::npos; at += kPlace.size()) {
        const std::size_t number = at + kPlace.size();
        if (number < formatted.size() && formatted[number] >= '0' && formatted[number] <= '9') {
            text += formatted.substr(done, at - done) + parameters.at(formatted[number] - '0');
            done = number + 1;
        }
    }
    return text + formatted.substr(done);
}

} // namespace

const std::vector<CataloguedMessage>& CopyOfTheCatalogue() {
    static const std::vector<CataloguedMessage> kCopy = ReadCopy();
    return kCopy;
}

std::string CataloguedText(int id, const std::vector<std::string>& parameters) {
    const std::vector<CataloguedMessage>& copy = CopyOfTheCatalogue();
    const auto found = std::find_if(copy.begin(), copy.end(), [id](const auto& message) { return message.id == id; });
    if (found == copy.end()) {
        return "no message " + std::to_string(id) + " in the tests' copy of the catalogue";
    }
    if (found->parameters != parameters.size()) {
        return found->name + " with " + std::to_string(parameters.size()) + " parameters";
    }
    return Filled(found->formatted, parameters);
}

} // namespace veltrane::tests
