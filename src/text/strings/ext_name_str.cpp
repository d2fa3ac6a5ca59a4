#include "text/converters/status.h"

#include <MCXML_900/ExtNameStr.h>
#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>
#include <MCXML_900/KORDMBTranscode.h>
#include <MCXML_900/SystemEncoding.h>

#include <unicode/ucnv.h>

#include <memory>

namespace MCXML_900 {

using namespace veltrane::text;

namespace {

struct CloseConverter {
    void operator()(void* converter) const { ucnv_close(static_cast<UConverter*>(converter)); }
};
using OwnedConverter = std::unique_ptr<void, CloseConverter>;

/// A converter for the encoding of the system; null, which is the default converter, for one that ICU doesn't know.
OwnedConverter SystemConverter() {
    return OwnedConverter(KORDMBConverterNew_A(SystemEncoding().c_str()));
}

} // namespace

struct ExtNameStr::Forms {
    std::string fU8;
    std::string fCodePage;
    int fConverterID = -1; ///< of the default converter that made fCodePage
    int fErrorCode = kConverted;
    std::u16string fU16;
    std::string fSystem;

    /// The first status that isn't clean stays.
    void Note(int status) {
        if (fErrorCode == kConverted) {
            fErrorCode = status;
        }
    }

    void MakeCodePage() {
        Note(KORDMBU8ToCodePage(nullptr, fCodePage, fU8));
        fConverterID = KORDMBDefaultConverterID();
    }

    void MakeSystem() { Note(KORDMBU8ToCodePage(SystemConverter().get(), fSystem, fU8)); }

    void MakeU16() { Note(KORDMBU8ToU16(fU16, fU8)); }

    /// @param status of the conversion to UTF-8
    void Refresh(int status) {
        fErrorCode = status;
        MakeCodePage();
        MakeSystem();
        MakeU16();
    }

    /// The code page as the default converter is now.
    void Update() {
        if (fConverterID != KORDMBDefaultConverterID()) {
            MakeCodePage();
            MakeSystem();
        }
    }
};

ExtNameStr::ExtNameStr() : fForms(new Forms) {}

ExtNameStr::ExtNameStr(const ExtNameStr& other) : fForms(new Forms(*other.fForms)) {}

ExtNameStr::~ExtNameStr() {
    delete fForms;
}

ExtNameStr& ExtNameStr::operator=(const ExtNameStr& other) {
    *fForms = *other.fForms;
    return *this;
}

void ExtNameStr::SetU8(const std::string& text) {
    fForms->fU8 = text;
    fForms->Refresh(kConverted);
}

void ExtNameStr::SetU16(const std::u16string& text) {
    fForms->Refresh(KORDMBU16ToU8(fForms->fU8, text));
}

void ExtNameStr::SetGeneric(const std::string& text) {
    fForms->Refresh(KORDMBGenericToU8(fForms->fU8, text));
}

void ExtNameStr::SetCP(const std::string& text, void* converter) {
    fForms->Refresh(KORDMBCodePageToU8(converter, fForms->fU8, text));
}

void ExtNameStr::SetSystem(const std::string& text) {
    // The default converter is made before the locale moves, whichever form of a name is the first one to be set.
    const std::string system = text;
    fForms->Update();
    fForms->fSystem = system;
    fForms->fErrorCode = KORDMBCodePageToU8(SystemConverter().get(), fForms->fU8, fForms->fSystem);
    fForms->MakeCodePage();
    fForms->MakeU16();
}

void ExtNameStr::Clear() {
    SetU8({});
}

const std::string& ExtNameStr::GetU8() const {
    return fForms->fU8;
}

const std::u16string& ExtNameStr::GetU16() const {
    return fForms->fU16;
}

const std::string& ExtNameStr::GetGeneric() const {
    return qUTF8mode() != 0 ? GetU8() : GetCP();
}

const std::string& ExtNameStr::GetCP() const {
    fForms->Update();
    return fForms->fCodePage;
}

std::string ExtNameStr::GetCP(void* converter) const {
    std::string text;
    fForms->fErrorCode = KORDMBU8ToCodePage(converter, text, fForms->fU8);
    return text;
}

const std::string& ExtNameStr::GetSystem() const {
    return fForms->fSystem;
}

const char* ExtNameStr::GetU8Z() const {
    return GetU8().c_str();
}

const char16_t* ExtNameStr::GetU16Z() const {
    return GetU16().c_str();
}

const char* ExtNameStr::GetGenericZ() const {
    return GetGeneric().c_str();
}

const char* ExtNameStr::GetCPZ() const {
    return GetCP().c_str();
}

const char* ExtNameStr::GetSystemZ() const {
    return GetSystem().c_str();
}

bool ExtNameStr::Empty() const {
    return fForms->fU8.empty();
}

int ExtNameStr::ErrorCode() const {
    return fForms->fErrorCode;
}

} // namespace MCXML_900
