// The pushing of a text that is made on the way.
#pragma once

#include "core/pool.h"
#include "formula/machine.h"

#include <cstddef>

namespace vorn {

// Pushes a text of `size` units, none of them zero, that `write` puts where it is told: into its
// place in the pool, since formulas make texts by the thousand and a copy costs as much as most of
// them. Without memory the text is empty.
template <typename Write>
void pushWrittenText(std::size_t size, Write write)
{
    const std::int32_t index = stringPool->addTextSpace(size);
    if (index != -1)
        write(stringPool->units(index));
    pushText(index);
}

} // namespace vorn
