// An allocator for tests: it counts what is in use and refuses one allocation that the test
// chooses.
#pragma once

namespace vorn {

// Watches every allocation while it lives. Frees are never refused.
class AllocationWatch {
public:
    // Refuses the allocation with this number, counted from 1; 0 refuses none.
    explicit AllocationWatch(int refused = 0);
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    // Allocations and growths asked for so far, the refused one among them.
    int asked() const;

    // Did the test come as far as the allocation to refuse?
    bool refused() const;

    // Blocks allocated since the watch began and not freed again. Negative when older ones went.
    int liveBlocks() const;

    // From now on nothing is refused.
    void relent();
};

} // namespace vorn
