#ifndef VELTRANE_H
#define VELTRANE_H

#include <veltrane_export.h>

#endif
