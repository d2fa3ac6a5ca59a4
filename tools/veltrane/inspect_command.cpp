#include "inspect_command.h"

#include "byte_stream.h"
#include "describe.h"
#include "document.h"
#include "encoding.h"
#include "failure.h"

#include <unistd.h>

namespace veltrane::host {

int RunInspect(const InspectOptions& options) {
    const Encoding encoding(options.encoding);
    const Document document = ReadAnyDocument(options.document, options.encoding);
    const nlohmann::ordered_json description = Describe(document, encoding);
    const std::string text =
        options.json ? description.dump(2) + "\n" : encoding.FromUtf8(DescriptionTables(description));
    DescriptorSink(STDOUT_FILENO, "standard output").Write(text);
    if (document.isPmml)
        RequireDerivedFields(document, options.document);
    return kExitDone;
}

} // namespace veltrane::host
