#ifndef MCVELTRANE_900_ERRORFORMATER_H
#define MCVELTRANE_900_ERRORFORMATER_H

#include <ScoreContext/VTErrorFormater.h>

namespace MCVeltrane_900 {

/// The formater of every exception of the library. It holds the whole message catalogue from static initialisation to
/// the end of the process.
extern VELTRANE_API ScoreContext::VTErrorFormater gErrorFormater;

} // namespace MCVeltrane_900

#endif
