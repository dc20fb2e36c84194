#pragma once

#include <QtGlobal>

/// Which pages may open the print dialog by themselves: once the user has cancelled one,
/// a page may when he has clicked in it since, or has clicked anywhere before it came,
/// as it may be the answer to that click. Shared by all pages, as a page can open windows
/// that print.
class PrintSilence {
public:
    /// One page's part.
    class Page {
    public:
        explicit Page(PrintSilence& all) : m_all(all), m_madeAt(++all.m_now) {}

        /// The user clicks in the page, or sends it somewhere.
        void clicked() { m_all.m_clickedAt = m_clickedAt = ++m_all.m_now; }
        bool mayPrint() const
        {
            const quint64 since = m_all.m_cancelledAt;
            const bool isAnswer = m_all.m_clickedAt > since && m_madeAt > m_all.m_clickedAt;
            return since == 0 || m_clickedAt > since || isAnswer;
        }

    private:
        PrintSilence& m_all;
        quint64 m_madeAt;
        quint64 m_clickedAt = 0;
    };

    /// The user cancels a print that a page has asked for.
    void cancelled() { m_cancelledAt = ++m_now; }

private:
    /// Counts what has happened.
    quint64 m_now = 0;
    quint64 m_clickedAt = 0;
    quint64 m_cancelledAt = 0;
};
