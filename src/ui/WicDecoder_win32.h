#pragma once

#include <memory>

#include "ui/PictureMaker.h"

namespace tobbin {

// How much of the reducing of a picture is left to the system: what its JPEG decoder can do while
// it decodes, or all of it (for tests: the coarser way).
enum class Reducing { WhileDecoding, Always };

// A maker of pictures that decodes by the system's imaging component. For the thread that calls,
// which then has a lower priority.
std::unique_ptr<PictureMaker> MakeSystemPictureMaker(Reducing reducing = Reducing::WhileDecoding);

}  // namespace tobbin
