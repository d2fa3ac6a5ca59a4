#include "diagnostics/trace.h"

#include <MCVeltrane_900/VTException.h>

#include <cstdarg>

namespace MCVeltrane_900 {

VTException::VTException(ScoreContext::IErrorFormater* formater) : fErrorCode(0), fFormater(formater) {}

VTException::VTException(int code, const std::string& detail, ScoreContext::IErrorFormater* formater)
    : fErrorCode(code), fDetailMessage(detail), fFormater(formater) {}

VTException::VTException(const VTException& other) = default;

VTException& VTException::operator=(const VTException& other) = default;

VTException::~VTException() = default;

bool VTException::PutErrorMessage(int id, ...) {
    fErrorCode = id;
    if (fFormater == nullptr) {
        return false;
    }
    ErrorRecord record{id, {}};
    const int wanted = fFormater->GetParameterNumber(id);
    va_list arguments;
    va_start(arguments, id);
    for (int read = 0; read < wanted; ++read) {
        const char* value = va_arg(arguments, const char*);
        if (value == nullptr) {
            break;
        }
        record.parameters.emplace_back(value);
    }
    va_end(arguments);
    fRecords.push_back(std::move(record));
    return true;
}

void VTException::SetFormater(ScoreContext::IErrorFormater* formater) {
    fFormater = formater;
}

void VTException::SetDetailMessage(const char* detail) {
    fDetailMessage = detail != nullptr ? detail : "";
}

std::string VTException::GetDetailMessage() const {
    return fDetailMessage;
}

int VTException::GetErrorCode() const {
    return fErrorCode;
}

std::string VTException::ConstructMessage() const {
    if (fFormater == nullptr) {
        return {};
    }
    if (fRecords.empty()) {
        return fErrorCode != 0 ? fFormater->FormatN(fErrorCode, 0) : std::string();
    }
    std::string text;
    for (const ErrorRecord& record : fRecords) {
        text += fFormater->Format(record.id, record.parameters);
    }
    return text;
}

std::string VTException::GetErrorMessage() const {
    std::string text = ConstructMessage() + fDetailMessage;
    veltrane::diagnostics::Trace(veltrane::diagnostics::TRACE_ERRORS, "Error message : %s", text.c_str());
    return text;
}

} // namespace MCVeltrane_900
