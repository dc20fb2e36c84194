#pragma once

#include "browser/ProposalSource.h"
#include "history/HistoryList.h"

#include <QDateTime>

#include <memory>

class QThread;

/// What the address lines propose: the history of the run and the archive as it is saved. The
/// archive is read in a thread of its own when something is typed first, and again when it has
/// been saved since.
class KnownPages : public ProposalSource {
    Q_OBJECT
public:
    /// `history` outlives the object.
    KnownPages(const HistoryCollection& history, const QString& programFolder, QObject* parent);
    ~KnownPages() override;

    void prepare() override;
    std::vector<KnownAddress> proposals(const QString& typed,
                                        const KnownAddresses& ofWindow) override;

private:
    void readArchive();

    const HistoryCollection& m_history;
    QString m_programFolder;
    KnownAddresses m_visited;
    std::shared_ptr<const KnownAddresses> m_bookmarks = std::make_shared<KnownAddresses>();
    QDateTime m_archiveSaved; ///< as of the last time it was read
    std::unique_ptr<QThread> m_reader;
};
