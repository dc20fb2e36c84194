#pragma once

#include <QString>

class QUrl;

/// Whether the scripts of one page may still speak up: from its second message
/// in a row on the user can silence a page, until it makes way for another one.
///
/// What counts is what is known when a script speaks: that a document has come may
/// be told to the program only after its scripts have spoken.
class DialogSilence {
public:
    bool isSilenced() const { return m_isSilenced; }
    void silence() { m_isSilenced = true; }
    /// The next message; true if it comes with the offer to silence the page.
    bool offersSilence() { return ++m_messages > 1; }

    /// The user goes somewhere, or loads the page again.
    void userNavigates();
    /// The page is about to open `url`, which may come to nothing.
    void navigationStarting(const QUrl& url);
    /// A script in `frame`, which may be a frame of another site, is about to speak; `shown`
    /// is the address of the page, as far as the engine tells. Only another site is
    /// another page: on its own a script goes to new addresses as often as it likes.
    void speaks(const QUrl& frame, const QUrl& shown);

private:
    /// The site that speaks up.
    QString m_page;
    /// The site that the page has been about to open last.
    QString m_target;
    int m_messages = 0;
    bool m_isSilenced = false;
};
