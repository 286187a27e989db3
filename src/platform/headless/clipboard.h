// A clipboard that lives with the program.
#pragma once

#include "platform/clipboard.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vorn {

class MemoryClipboard : public Clipboard {
public:
    unsigned registerFormat(std::u16string_view name) override
    {
        const auto known = std::find(names_.begin(), names_.end(), name);
        const auto number = static_cast<unsigned>(known - names_.begin()) + 1;
        if (known == names_.end())
            names_.emplace_back(name);
        return number;
    }

    bool holds(unsigned) override { return false; }
    bool holdsText() override { return hasText_; }

    void putText(std::u16string_view text) override
    {
        text_ = text;
        hasText_ = true;
    }
    std::u16string text() override { return text_; }

private:
    std::vector<std::u16string> names_;
    std::u16string text_;
    bool hasText_ = false;
};

} // namespace vorn
