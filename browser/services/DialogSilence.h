#pragma once

#include <QUrl>

/// Whether the scripts of one page may still speak up: from its second message
/// in a row on the user can silence a page, until it makes way for another one.
class DialogSilence {
public:
    bool isSilenced() const { return m_isSilenced; }
    void silence() { m_isSilenced = true; }
    /// The next message; true if it comes with the offer to silence the page.
    bool offersSilence() { return ++m_messages > 1; }

    /// The user goes somewhere, or loads the page again.
    void userNavigates() { *this = {m_page}; }
    /// The page is at `url` now. Only another site is another page: on its own a script
    /// goes to new addresses as often as it likes.
    void movedTo(const QUrl& url)
    {
        constexpr auto page = QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment;
        if (!url.matches(m_page, page)) {
            *this = {url};
        }
    }

    DialogSilence() = default;

private:
    DialogSilence(const QUrl& page) : m_page(page) {}

    QUrl m_page;
    int m_messages = 0;
    bool m_isSilenced = false;
};
