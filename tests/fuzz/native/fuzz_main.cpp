// One target of the fuzzer: TARGET is the name of its function.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string broken = fuzz::TARGET({reinterpret_cast<const char*>(data), size});
    if (!broken.empty()) {
        fprintf(stderr, "broken: %s\n", broken.c_str());
        abort();
    }
    return 0;
}
