#ifndef SCORECONTEXT_VTERRORFORMATER_H
#define SCORECONTEXT_VTERRORFORMATER_H

#include <ScoreContext/IErrorFormater.h>

#include <map>

namespace ScoreContext {

/// The formater over a message table in memory. Texts keep the bytes of their parameters under every locale.
///
/// Threads: once the table is loaded, any number of threads may format at a time.
/// `LoadMessages` and assignment want the object for themselves.
class VELTRANE_API VTErrorFormater : public IErrorFormater {
public:
    /// Loads a table as `LoadMessages` does.
    VTErrorFormater(int count, MessageItem* items);
    /// Copies the map; the texts are shared.
    VTErrorFormater(const VTErrorFormater& other);
    VTErrorFormater& operator=(const VTErrorFormater& other);

    std::string FormatV(int id, ...) override;
    std::string VFormatN(int id, int count, va_list arguments) override;
    std::string FormatN(int id, int count, ...) override;
    std::string Format(int id, const std::vector<std::string>& parameters) override;
    int GetParameterNumber(int id) override;
    bool LoadMessages(int count, MessageItem* items) override;

private:
    char* FindMessageContent(int id);

    std::map<int, char*> fMessages;
};

} // namespace ScoreContext

#endif
