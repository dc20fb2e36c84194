#pragma once

#include <QString>

#include <chrono>
#include <deque>

class QUrl;

/// How many windows pages may open by themselves: a few at a time, so that a
/// page cannot bury the user under windows. Shared by all pages, since a window
/// opened that way can open further ones. A click opens a window always.
class PopupLimit {
public:
    static constexpr std::size_t mostWindows = 8;
    static constexpr std::chrono::seconds span{10};

    /// Whether a window asked for at `now` (counted from any fixed moment) may
    /// open; one that may is counted. After a click pages begin anew.
    bool mayOpen(std::chrono::milliseconds now, bool isUsersWish);

private:
    std::deque<std::chrono::milliseconds> m_opened;
};

/// Which pages may open the print dialog by themselves. Once the user has cancelled a
/// dialog that a page has opened, none may, with two exceptions: a page that he has
/// clicked in since, and a page that was made after his last click anywhere since, as it
/// may be what he has clicked for. Shared by all pages, as a page can open windows that
/// print.
class PrintLimit {
public:
    /// One page's part.
    class Page {
    public:
        explicit Page(PrintLimit& all) : m_all(all), m_madeAt(++all.m_now) {}

        /// The user clicks in the page, or sends it somewhere.
        void clicked() { m_all.m_clickedAt = m_clickedAt = ++m_all.m_now; }
        bool mayPrint() const;

    private:
        PrintLimit& m_all;
        quint64 m_madeAt;
        quint64 m_clickedAt = 0;
    };

    /// The user cancels a print that a page has asked for.
    void cancelled() { m_cancelledAt = ++m_now; }

private:
    /// Counts what happens; the other members are moments of this count, 0 for never.
    quint64 m_now = 0;
    quint64 m_clickedAt = 0;
    quint64 m_cancelledAt = 0;
};

/// Whether the scripts of one page may still open dialogs: from the second dialog
/// in a row on the user can silence a page, until it makes way for another one.
///
/// What counts is what is known when a script opens a dialog: that a document has come may
/// be told to the program only after its scripts have done so.
class DialogLimit {
public:
    bool isSilenced() const { return m_isSilenced; }
    void silence() { m_isSilenced = true; }
    /// Counts the next dialog; true if it comes with the offer to silence the page.
    bool offersSilence() { return ++m_dialogs > 1; }

    /// The user goes somewhere, or loads the page again.
    void userNavigates();
    /// The page is about to open `url`, which may come to nothing.
    void navigationStarting(const QUrl& url);
    /// A script in `frame`, which may be a frame of another site, is about to open a dialog;
    /// `shown` is the address of the page, as far as the engine tells. Only another site is
    /// another page: on its own a script goes to new addresses as often as it likes.
    void dialogStarting(const QUrl& frame, const QUrl& shown);

private:
    /// The site whose dialogs are counted.
    QString m_site;
    /// The site that the page has been about to open last.
    QString m_target;
    int m_dialogs = 0;
    bool m_isSilenced = false;
};
