#ifndef MCVELTRANE_900_VTEXCEPTION_H
#define MCVELTRANE_900_VTEXCEPTION_H

#include <MCVeltrane_900/ErrorFormater.h>

#include <list>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

/// One message of an exception: its id and the values of its placeholders.
struct ErrorRecord {
    int id;
    std::vector<std::string> parameters;
};

/// The one exception of the library, for every failure of parsing, building and set-up. It is thrown by value and
/// caught by reference. It holds message ids with parameters and no finished text; the text is made when it is asked
/// for. It is no standard exception.
class VELTRANE_API VTException {
public:
    /// @param formater makes the texts; not owned, may be null
    explicit VTException(ScoreContext::IErrorFormater* formater = &gErrorFormater);
    /// An exception without records: its text is the raw pattern of `code`.
    VTException(int code, const std::string& detail, ScoreContext::IErrorFormater* formater = &gErrorFormater);
    VTException(const VTException& other);
    VTException& operator=(const VTException& other);
    virtual ~VTException();

    /// Adds a message and makes its id the error code.
    /// @param id message id; its parameters follow as `char const *`. As many are kept as the pattern has
    ///           placeholders; a null one ends them
    /// @return false, and no record is kept, when there is no formater
    bool PutErrorMessage(int id, ...);

    /// @param formater not owned; null leaves the detail message as the only text
    void SetFormater(ScoreContext::IErrorFormater* formater);
    /// Replaces the detail message: free text from outside the catalogue. Null empties it.
    void SetDetailMessage(const char* detail);
    std::string GetDetailMessage() const;
    /// @return the id that was put last; 0 when there is none
    int GetErrorCode() const;

    /// @return the texts of all records run together, or the raw pattern of the code when there are no records
    std::string ConstructMessage() const;
    /// @return the text of ConstructMessage with the detail message right behind it; it is traced at level 3 too
    std::string GetErrorMessage() const;

private:
    int fErrorCode;
    std::string fDetailMessage;
    ScoreContext::IErrorFormater* fFormater;
    std::list<ErrorRecord> fRecords;
};

} // namespace MCVeltrane_900

#endif
