#pragma once

#include "base/BookmarkFile.h"

#include <QUrl>

#include <optional>
#include <vector>

/// What a page says about the bookmark file that it shows. Its document is asked by scripts in
/// a JavaScript world that the page's own scripts cannot see; the engine has parsed the file. A
/// page may still change its document at any time, and hold as much as it likes, so that each
/// answer is small, quick, and read as a stranger's.
struct BookmarkOffer {
    /// Tells the documents of a page apart.
    double document = 0;
    /// How many links there are, which is about how many bookmarks.
    int links = 0;

    static QString script();
    /// None where the page shows no bookmark file, or one without links.
    static std::optional<BookmarkOffer> read(const QString& answer);
};

/// Reads the bookmarks of one page, a part at a time.
class BookmarkPageReader {
public:
    /// `address` is that of the page.
    explicit BookmarkPageReader(const QUrl& address);

    /// To be run for the first part.
    QString firstScript() const;
    /// To be run for each part that follows.
    QString nextScript() const;
    /// To be run when no part is wanted any more.
    QString lastScript() const;

    enum class Progress { More, Done, Refused };
    /// Takes the answer to one of the first two scripts. Whatever no such script says is
    /// refused: the document has gone, or somebody else has answered.
    Progress take(const QString& answer);
    /// How many bookmarks have been read.
    int count() const { return static_cast<int>(m_file.bookmarks.size()); }
    /// What has been read; to be taken once.
    BookmarkFile takeFile() { return std::move(m_file); }

private:
    bool takeEvent(const QString& kind, const QString& first, const QString& second);
    void enterList();
    void addBookmark(const QString& titel, const QString& url);
    void describe(const QString& text);

    /// Random, so that no page knows where the scripts keep their place.
    QString m_token;
    BookmarkFile m_file;
    /// The folders of the lists that the walk is in.
    std::vector<int> m_open{0};
    /// How many lists it is in beyond these.
    qint64 m_tooDeep = 0;
    /// The heading whose list has not come yet.
    std::optional<QString> m_heading;
    /// The last bookmark may still get its description.
    bool m_isDescribed = true;
    qint64 m_length = 0;
    qint64 m_events = 0;
};
