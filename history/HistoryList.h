#pragma once

#include "base/KeyedCollection.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

/// One visited address with its page title and the local time of the visit.
class HistoryItem {
public:
    const QString& Url() const { return m_url; }
    void Url(const QString& value) { m_url = value; }
    const QString& Title() const { return m_title; }
    void Title(const QString& value) { m_title = value; }
    const QDateTime& UrlDate() const { return m_urlDate; }
    void UrlDate(const QDateTime& value) { m_urlDate = value; }
    /// How often the address was visited.
    int Visits() const { return m_visits; }
    void Visits(int value) { m_visits = value; }
    /// What the entry's comparisons use: 0 `Url`, 1 `Title`, 2 `UrlDate`. Any
    /// other value is stored as 2.
    qint16 SortSel() const { return m_sortSel; }
    void SortSel(qint16 value) { m_sortSel = value >= 0 && value <= 2 ? value : byDate; }

    void SetItem(const QString& sUrl, const QString& sTitle, const QDateTime& urlDate);

private:
    static constexpr qint16 byDate = 2;

    // Compare `a` and `b` by this entry's SortSel; texts by character code.
    bool IsEqual(const HistoryItem& a, const HistoryItem& b) const;
    bool IsLess(const HistoryItem& a, const HistoryItem& b) const;
    friend class HistoryTest;

    QString m_url;
    QString m_title;
    QDateTime m_urlDate;
    int m_visits = 1;
    qint16 m_sortSel = byDate;
};

/// The visited addresses of this run, oldest first, without keys.
using HistoryCollection = KeyedCollection<std::shared_ptr<HistoryItem>>;

/// Puts a visit into the list. An address that is there already (exact,
/// case-sensitive) keeps its place with the new title and time; otherwise the
/// oldest entry goes, once, when the list has reached `historyRows`, and the
/// visit is appended. A list longer than a lowered limit keeps its length.
///
/// Throws NotFoundError, and adds nothing, when the limit is 0 or less and the
/// list is empty.
void addVisit(HistoryCollection& history, const QString& url, const QString& title,
              const QDateTime& now, int historyRows);

/// The entries that the user may want again, the best first: those that were visited most. A
/// visit counts up to twice as much, the later the last one to its address was.
std::vector<std::shared_ptr<HistoryItem>> mostWanted(const HistoryCollection& history);
