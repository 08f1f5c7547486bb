#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fakes/FakeEnvironment.h"
#include "util/Check.h"

namespace tobbin {

// What a fuzzer does with one input: reads it as its format, and CHECKs what must hold of whatever
// was read.
void TakeInput(std::string_view bytes);

}  // namespace tobbin

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tobbin::TakeInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
