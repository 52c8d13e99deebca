#include "support/failing_allocation.h"

#include <cstdlib>
#include <new>

// In a source of its own: where the compiler sees these next to a new expression, it takes the
// pair for a mismatch.

namespace {

// Allocations of this thread until one fails; none fails while it is negative.
thread_local int allocationsLeft = -1;

} // namespace

void* operator new(std::size_t size) {
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) {
        throw std::bad_alloc();
    }
    void* memory = std::malloc(size == 0 ? 1 : size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace tracksmith::test {

FailingAllocation::FailingAllocation(int index) {
    allocationsLeft = index;
}

FailingAllocation::~FailingAllocation() {
    allocationsLeft = -1;
}

} // namespace tracksmith::test
