#pragma once

#include <string>

// The playing time of an MP3 file in milliseconds, added up from its frames; -1 when it has none.
int Mp3LengthMilliseconds(const std::string& bytes);
