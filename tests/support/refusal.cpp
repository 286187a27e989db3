#include "support/refusal.h"

#include "core/memory.h"

#include <cassert>
#include <cstddef>

namespace vorn {
namespace {

struct Watch {
    bool installed = false;
    int refuse = 0;
    int asked = 0;
    int live = 0;
    bool refused = false;
};
Watch watch;

void* watchedBlock(void* block, std::size_t bytes)
{
    if (bytes == 0) {
        watch.live -= block != nullptr ? 1 : 0;
        return resizeBlock(block, 0);
    }
    if (++watch.asked == watch.refuse) {
        watch.refused = true;
        return nullptr;
    }
    watch.live += block == nullptr ? 1 : 0;
    return resizeBlock(block, bytes);
}

} // namespace

AllocationWatch::AllocationWatch(int refused)
{
    assert(!watch.installed);
    watch = {};
    watch.installed = true;
    watch.refuse = refused;
    blockResizer = watchedBlock;
}

AllocationWatch::~AllocationWatch()
{
    blockResizer = resizeBlock;
    watch.installed = false;
}

int AllocationWatch::asked() const
{
    return watch.asked;
}
bool AllocationWatch::refused() const
{
    return watch.refused;
}
int AllocationWatch::liveBlocks() const
{
    return watch.live;
}
void AllocationWatch::relent()
{
    watch.refuse = 0;
}

} // namespace vorn
