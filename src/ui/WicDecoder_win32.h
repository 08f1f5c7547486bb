#pragma once

#include <memory>

#include "ui/PictureMaker.h"

namespace tobbin {

// A maker of pictures that decodes, scales and turns by the system's imaging component. For the
// thread that calls, which then has a lower priority.
std::unique_ptr<PictureMaker> MakeSystemPictureMaker();

}  // namespace tobbin
