// Changes this process's environment for the length of a test; what was there comes back.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace processes {

class EnvironmentVariable
{
public:
    /// Without a value the variable is removed.
    EnvironmentVariable(std::string name, const std::optional<std::string>& value)
        : name(std::move(name))
    {
        const char* current = ::secure_getenv(this->name.c_str());
        if (current != nullptr) {
            previous = current;
        }
        set(value);
    }

    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    EnvironmentVariable(EnvironmentVariable&&) = delete;
    EnvironmentVariable& operator=(EnvironmentVariable&&) = delete;

    ~EnvironmentVariable() { set(previous); }

    // Tests that change the environment run one thread.
    void set(const std::optional<std::string>& value) const
    {
        if (value.has_value()) {
            ::setenv(name.c_str(), value->c_str(), 1); // NOLINT(concurrency-mt-unsafe)
        } else {
            ::unsetenv(name.c_str()); // NOLINT(concurrency-mt-unsafe)
        }
    }

private:
    const std::string name;
    std::optional<std::string> previous;
};

} // namespace processes
