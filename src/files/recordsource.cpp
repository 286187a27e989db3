#include "files/recordsource.h"

#include "core/error.h"
#include "core/memory.h"
#include "files/stream.h"

#include <algorithm>

namespace vorn {

RecordSource::RecordSource(Stream& stream, std::uint32_t length)
    : block_(static_cast<std::uint8_t*>(blockResizer(nullptr, std::max(length, 1U))))
{
    if (block_ == nullptr)
        raiseError(ErrorMemory);
    else
        length_ = stream.Read(block_, length);
}

RecordSource::~RecordSource()
{
    blockResizer(block_, 0);
}

// What is left is no whole record.
bool RecordSource::endEarly(std::uint16_t& type)
{
    const bool hasHead = remaining() >= RecordHeadBytes;
    if (hasHead)
        type = get16(block_ + place_);
    const bool isForeign = hasHead && place_ == 0 && type != RecordHeader;
    if (!isForeign)
        raiseError(ErrorFileRead);
    return false;
}

} // namespace vorn
