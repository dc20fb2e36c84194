#pragma once

#include <chrono>
#include <deque>

/// How many windows pages may open by themselves: a few at a time, so that a
/// page cannot bury the user under windows. Shared by all pages, since a window
/// opened that way can open further ones. A click opens a window always.
class PopupLimit {
public:
    static constexpr std::size_t mostWindows = 8;
    static constexpr std::chrono::seconds span{10};

    /// Whether a window asked for at `now` (counted from any fixed moment) may
    /// open; one that may is counted. After a click pages begin anew.
    bool mayOpen(std::chrono::milliseconds now, bool isUsersWish)
    {
        if (isUsersWish) {
            m_opened.clear();
            return true;
        }
        while (!m_opened.empty() && now - m_opened.front() >= span)
            m_opened.pop_front();
        if (m_opened.size() >= mostWindows)
            return false;
        m_opened.push_back(now);
        return true;
    }

private:
    std::deque<std::chrono::milliseconds> m_opened;
};
