// Where the compiler has put a virtual operation.
#pragma once

#include <cstddef>
#include <cstring>

// The place of a virtual operation in the table of its class.
template <typename Operation> size_t SlotOf(Operation operation)
{
    static_assert(sizeof operation >= sizeof(size_t));
    size_t offset = 0;
    memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / sizeof(void*);
}
