#include "files/recordsource.h"

#include "core/error.h"
#include "core/memory.h"
#include "files/nativerecords.h"
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

bool RecordSource::next(std::uint16_t& type, RecordCursor& fields)
{
    if (length_ - place_ < RecordHeadBytes) {
        raiseError(ErrorFileRead);
        return false;
    }
    const std::uint8_t* head = block_ + place_;
    type = get16(head);
    const std::uint32_t size = get16(head + 2);
    place_ += RecordHeadBytes;
    if (length_ - place_ < size) {
        const bool isFirst = place_ == RecordHeadBytes;
        if (!isFirst || type == RecordHeader)
            raiseError(ErrorFileRead);
        return false;
    }
    fields = RecordCursor(head + RecordHeadBytes, size);
    place_ += size;
    return true;
}

} // namespace vorn
