#include "commands/commands.h"
#include "documents/document.h"
#include "documents/document_file.h"
#include "documents/model_list.h"
#include "files/byte_stream.h"
#include "files/failure.h"

#include <algorithm>
#include <map>
#include <unistd.h>

namespace veltrane::host {
namespace {

bool IsShown(char character) {
    return static_cast<unsigned char>(character) >= 0x20 && character != 0x7F;
}

/// Whether a name can be typed as the value of an option, and read in a list with one name a line.
bool IsWord(const std::string& name) {
    return !name.empty() && name.front() != '-' && std::all_of(name.begin(), name.end(), IsShown);
}

} // namespace

std::string ModelNames(const DocumentOutline& outline) {
    std::map<std::string, std::size_t> models;
    for (const OutlinedModel& model : outline.models) {
        ++models[model.name];
    }
    std::string lines;
    for (std::size_t place = 0; place < outline.models.size(); ++place) {
        const std::string& name = outline.models[place].name;
        const std::string number = std::to_string(place + 1);
        if (IsWord(name) && models[name] == 1) {
            lines += name + '\n';
        } else if (!models.contains(number)) { // a name goes before a number
            lines += number + '\n';
        }
    }
    return lines;
}

int RunModelNames(const ModelNamesOptions& options) {
    StartLibrary();
    DocumentFile file(options.document, kCannotOpenDocument);
    DescriptorSink(STDOUT_FILENO, "standard output").Write(ModelNames(ReadPmmlOutline(file)));
    return EXIT_DONE;
}

} // namespace veltrane::host
