// Sets one variable of the environment for the time of a test; null takes it away.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vorn {

class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const char* value) : name_(name)
    {
        if (const char* former = std::getenv(name))
            former_ = former;
        set(value);
    }
    ~EnvironmentVariable() { set(former_ ? former_->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const char* value)
    {
        if (value != nullptr)
            ::setenv(name_, value, 1);
        else
            ::unsetenv(name_);
    }

    const char* name_;
    std::optional<std::string> former_;
};

} // namespace vorn
