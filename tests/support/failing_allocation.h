#pragma once

namespace tracksmith::test {

/// Lets one allocation of this thread fail while it lives. A program that uses it must be linked
/// with failing_allocation.cpp, which takes the place of the global operator new.
class FailingAllocation {
public:
    /// The `index`-th allocation from now on fails with std::bad_alloc, counted from 0.
    explicit FailingAllocation(int index);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

} // namespace tracksmith::test
