// The clipboard of the machine, as far as the system uses it.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

class Clipboard {
public:
    virtual ~Clipboard() = default;

    // The number of a format of the system's own, the same for the same name; 0 where the machine
    // has none to give.
    virtual unsigned registerFormat(std::u16string_view name) = 0;

    // Can it be asked for this format now, or for a text?
    virtual bool holds(unsigned format) = 0;
    virtual bool holdsText() = 0;

    // Puts a text there, in place of all that it held.
    virtual void putText(std::u16string_view text) = 0;

    // The text that it holds; empty if it holds none.
    virtual std::u16string text() = 0;
};

} // namespace vorn
