#include "factory/documents/host_path.h"

#include <MCXML_900/ExtNameStr.h>

namespace veltrane::factory {

std::string HostPath(const std::string& path) {
    MCXML_900::ExtNameStr name;
    name.SetU8(path);
    const std::string& form = name.GetCP();
    return form.empty() ? path : form;
}

} // namespace veltrane::factory
