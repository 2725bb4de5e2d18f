#pragma once
// An environment variable, set or removed for one test.

#include <cstdlib>
#include <optional>
#include <string>

namespace kestrel::tests {

class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value) : name_(name) {
        if (const char* const old = std::getenv(name))
            old_ = old;
        set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { set(old_ ? old_->c_str() : nullptr); }

  private:
    void set(const char* value) const {
        if (value == nullptr)
            ::unsetenv(name_);
        else
            ::setenv(name_, value, 1);
    }

    const char* name_;
    std::optional<std::string> old_;
};

} // namespace kestrel::tests
