#include "app/KnownPages.h"

#include "bookmarks/SavedBookmarks.h"

#include <QThread>

namespace {
std::shared_ptr<const KnownAddresses> bookmarksIn(const QString& programFolder)
{
    std::vector<KnownAddress> known;
    for (SavedBookmark& bookmark : savedBookmarks(programFolder))
        if (!bookmark.url.isEmpty())
            known.push_back({std::move(bookmark.url), std::move(bookmark.titel)});
    return std::make_shared<KnownAddresses>(std::move(known));
}
} // namespace

KnownPages::KnownPages(const HistoryCollection& history, const QString& programFolder,
                       QObject* parent)
    : ProposalSource(parent), m_history(history), m_programFolder(programFolder)
{
}

KnownPages::~KnownPages()
{
    if (m_reader)
        m_reader->wait();
}

void KnownPages::prepare()
{
    std::vector<KnownAddress> visited;
    visited.reserve(static_cast<std::size_t>(m_history.Count()));
    for (const auto& item : mostWanted(m_history))
        visited.push_back({item->Url(), item->Title()});
    m_visited = KnownAddresses(std::move(visited));
}

std::vector<KnownAddress> KnownPages::proposals(const QString& typed,
                                                const KnownAddresses& ofWindow)
{
    readArchive();
    return proposalsFor(typed, {&m_visited, &ofWindow, m_bookmarks.get()});
}

void KnownPages::readArchive()
{
    const QDateTime saved = archiveSaved(m_programFolder);
    if (saved == m_archiveSaved || (m_reader && m_reader->isRunning()))
        return;
    m_archiveSaved = saved;
    m_reader.reset(QThread::create([this, folder = m_programFolder] {
        const auto read = bookmarksIn(folder);
        const auto take = [this, read] {
            m_bookmarks = read;
            emit grown();
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    }));
    m_reader->start(QThread::LowPriority);
}
