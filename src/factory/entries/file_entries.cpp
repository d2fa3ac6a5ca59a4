#include "diagnostics/raise.h"
#include "diagnostics/trace.h"
#include "factory/documents/xml_platform_guard.h"
#include "factory/entries/model_names.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCXML_900/ExtNameStr.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <fstream>

/// The operations of the factory that deal in paths. They bring a path into the form of the system, read the list of
/// model names, and go on as the operations on streams do.
namespace MCVeltrane_900 {

namespace diagnostics = veltrane::diagnostics;
using namespace veltrane::factory;

namespace {

/// The form in which the system's file operations take a path that a host gives in UTF-8: that of the code page, where
/// a character that it hasn't is a '?'. A path without such a form stays as it is.
std::string HostPath(const std::string& path) {
    MCXML_900::ExtNameStr name;
    name.SetU8(path);
    const std::string& form = name.GetCP();
    return form.empty() ? path : form;
}

std::vector<std::string> NamesInFile(const std::string& path) {
    std::vector<std::string> names;
    ReadModelNames(path, names);
    return names;
}

} // namespace

void ModelFactory::Initialize(std::string modelListFile) {
    StartXmlPlatform();
    if (!modelListFile.empty()) {
        fModelNames = NamesInFile(HostPath(modelListFile));
    }
    fInitialized = true;
}

void ModelFactory::Terminate() {
    xercesc::XMLPlatformUtils::Terminate();
}

ScoreModel* ModelFactory::MakeModelFromXML(std::istream& in, std::string& modelListFile) {
    return MakeModelFromXML(in, NamesInFile(HostPath(modelListFile)), std::string(), std::string());
}

ScoreModel* ModelFactory::MakeModelFromXML(const std::string& modelFile, const std::string& modelListFile,
                                           const std::string& encoding, const std::string& auxPath) {
    const XMLPlatformGuard guard;
    diagnostics::Trace(diagnostics::TRACE_PROGRESS, "Enter:%s", "MCVeltrane_900::ModelFactory::MakeModelFromXML");
    const std::string listPath = HostPath(modelListFile);
    const std::string modelPath = HostPath(modelFile);
    const std::string systemAuxPath = HostPath(auxPath);
    const std::vector<std::string> names = NamesInFile(listPath);
    RememberModelNames(names);
    std::ifstream file;
    if (!OpenForReading(file, modelPath)) {
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_DOCUMENT_FILE>(modelPath);
    }
    return MakeModelFromXML(file, names, encoding, systemAuxPath);
}

ScoreModel* ModelFactory::MakeModelFromXML(const std::string& modelFile, const std::string& modelListFile,
                                           const std::string& encoding) {
    return MakeModelFromXML(modelFile, modelListFile, encoding, std::string());
}

} // namespace MCVeltrane_900
