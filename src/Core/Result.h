#pragma once

#include <utility>
#include <variant>

namespace velto {

/// What a function that can fail returns: a value, or the error in its place.
template <typename Value, typename Error> class Result {
public:
    /// An empty error, until something is assigned.
    Result()
        : m_either(std::in_place_index<1>)
    {
    }
    Result(Value value)
        : m_either(std::in_place_index<0>, std::move(value))
    {
    }
    Result(Error error)
        : m_either(std::in_place_index<1>, std::move(error))
    {
    }

    explicit operator bool() const { return m_either.index() == 0; }
    /// Call only if there is a value.
    const Value &operator*() const & { return std::get<0>(m_either); }
    Value &&operator*() && { return std::get<0>(std::move(m_either)); }
    const Value *operator->() const { return &std::get<0>(m_either); }
    /// Call only if there is none.
    const Error &error() const { return std::get<1>(m_either); }

private:
    std::variant<Value, Error> m_either;
};

} // namespace velto
