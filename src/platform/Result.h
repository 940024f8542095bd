#pragma once

#include <QString>
#include <utility>
#include <variant>

namespace lumivane {

/// Why something could not be done, as a sentence for the user: what failed, where, and what can be done.
struct Failure
{
    QString sentence;
};

/// A value, or the reason why there is none.
template <class T>
class [[nodiscard]] Result
{
public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure) : m_content(std::in_place_index<1>, std::move(failure)) {}

    bool ok() const { return m_content.index() == 0; }
    explicit operator bool() const { return ok(); }

    const T& value() const& { return std::get<0>(m_content); }
    T& value() & { return std::get<0>(m_content); }
    T&& value() && { return std::get<0>(std::move(m_content)); }

    /// The reason; only to be asked for when there is no value.
    const QString& reason() const { return std::get<1>(m_content).sentence; }
    Failure failure() const { return std::get<1>(m_content); }

private:
    std::variant<T, Failure> m_content;
};

} // namespace lumivane
