#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    varo::fuzz::TouchstoneLoad({reinterpret_cast<const char*>(data), size});
    return 0;
}
