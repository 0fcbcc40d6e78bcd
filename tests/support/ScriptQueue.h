#pragma once

#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace orvantine::fake {

/// What a test told a fake to do, in order. What is added while a nested scope is open (the script of a modal form is
/// running) comes before what was waiting when the scope began.
template <class T>
class ScriptQueue
{
public:
    void push(T entry)
    {
        if (m_scopes.empty()) {
            m_entries.push_back(std::move(entry));
            return;
        }
        m_entries.insert(m_entries.begin() + m_scopes.back(), std::move(entry));
        ++m_scopes.back();
    }

    std::optional<T> pop()
    {
        if (m_entries.empty())
            return std::nullopt;
        T entry = std::move(m_entries.front());
        m_entries.pop_front();
        if (!m_scopes.empty() && m_scopes.back() > 0)
            --m_scopes.back();
        return entry;
    }

    void enter() { m_scopes.push_back(0); }
    /// What the scope left behind stays in front.
    void leave() { m_scopes.pop_back(); }

    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    [[nodiscard]] const std::deque<T>& waiting() const { return m_entries; }
    void clear()
    {
        m_entries.clear();
        for (auto& scope : m_scopes)
            scope = 0;
    }

private:
    std::deque<T> m_entries;
    std::vector<typename std::deque<T>::difference_type> m_scopes;
};

} // namespace orvantine::fake
