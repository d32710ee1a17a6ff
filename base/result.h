#pragma once
// The outcome of a call into a port: a value, or the error text of the
// library behind it. Callers treat a failure as a fault of that call alone.

#include <optional>
#include <string>
#include <utility>

namespace velmora {

struct Error {
    std::string message;
};

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Error error) : m_error(std::move(error.message)) {}

    bool ok() const { return m_value.has_value(); }
    explicit operator bool() const { return ok(); }
    const T& value() const { return *m_value; }
    T value_or(T fallback) const { return m_value ? *m_value : std::move(fallback); }
    const std::string& error() const { return m_error; }

private:
    std::optional<T> m_value;
    std::string m_error;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_failed(true), m_error(std::move(error.message)) {}

    bool ok() const { return !m_failed; }
    explicit operator bool() const { return ok(); }
    const std::string& error() const { return m_error; }

private:
    bool m_failed = false;
    std::string m_error;
};

using Status = Result<void>;

}  // namespace velmora
