// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NEWSBOX_H
#define NEWSBOX_H

#include <mutex>
#include <utility>

//! News that one thread puts together until another one takes them. They are announced once: who is
//! slow to take them gets fewer and larger ones.
template<typename News> class NewsBox
{
public:
    //! Lets \a change alter the news. True if they have to be announced.
    template<typename Change> bool tell(Change change)
    {
        const std::lock_guard lock(m_mutex);
        change(m_news);
        return !std::exchange(m_isAnnounced, true);
    }

    //! The news. What \a keep makes of them, state without what has happened, is what the next
    //! ones begin with.
    template<typename Keep> News take(Keep keep)
    {
        const std::lock_guard lock(m_mutex);
        m_isAnnounced = false;
        News next = keep(m_news);
        return std::exchange(m_news, std::move(next));
    }

    //! Nothing is announced any more before somebody takes the news.
    void hush()
    {
        const std::lock_guard lock(m_mutex);
        m_isAnnounced = true;
    }

private:
    std::mutex m_mutex;         //!< guards the others
    News m_news;                //!< not taken yet
    bool m_isAnnounced = false; //!< they are known to be there
};

#endif // NEWSBOX_H
