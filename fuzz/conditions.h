#ifndef VELTRANE_FUZZ_CONDITIONS_H
#define VELTRANE_FUZZ_CONDITIONS_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <string>

namespace veltrane::fuzz {

/// A case with some value for each field.
void FillRecord(const MCVeltrane_900::ScoreDictionary& fields, MCVeltrane_900::CaseRecord& record);

/// Reads every condition of a well-formed document, as a plug-in does, evaluates it in both forms, and copies and
/// displays it.
/// @throws VTException from the readers
void ReadConditions(const std::string& document, const char* encoding, bool withEncoders);

} // namespace veltrane::fuzz

#endif
