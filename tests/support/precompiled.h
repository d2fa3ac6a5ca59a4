// What most tests include, for builds that read it once (VELTRANE_PRECOMPILE_TESTS).
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>
