// Settings that live with the program.
#pragma once

#include "platform/settingsstore.h"

#include <map>
#include <variant>

namespace vorn {

class MemorySettings : public SettingsStore {
public:
    void open() override { values_ = kept_; }

    bool readNumber(std::string_view name, std::uint32_t& out) const override
    {
        return read(name, out);
    }
    bool readText(std::string_view name, std::u16string& out) const override
    {
        return read(name, out);
    }
    bool readBytes(std::string_view name, std::vector<unsigned char>& out) const override
    {
        return read(name, out);
    }

    void setNumber(std::string_view name, std::uint32_t value) override { set(name, value); }
    void setText(std::string_view name, std::u16string_view value) override
    {
        set(name, std::u16string(value.substr(0, value.find(u'\0'))));
    }
    void setBytes(std::string_view name, const std::vector<unsigned char>& value) override
    {
        set(name, value);
    }

    bool keep() override
    {
        if (!refuses)
            kept_ = values_;
        return !refuses;
    }

    bool refuses = false; // keep is denied

private:
    using Value = std::variant<std::uint32_t, std::u16string, std::vector<unsigned char>>;
    using Values = std::map<std::string, Value, std::less<>>;

    template <typename Type>
    bool read(std::string_view name, Type& out) const
    {
        const auto found = values_.find(name);
        if (found == values_.end() || !std::holds_alternative<Type>(found->second))
            return false;
        out = *std::get_if<Type>(&found->second);
        return true;
    }
    void set(std::string_view name, Value value)
    {
        values_.insert_or_assign(std::string(name), std::move(value));
    }

    Values values_;
    Values kept_;
};

} // namespace vorn
