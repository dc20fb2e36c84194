#pragma once

#include <QHash>

class QObject;

/// The downloads that the user has refused, of each page, until he sends it somewhere. After
/// two he is asked whether to refuse all.
class DownloadRefusals {
public:
    enum class Next { Ask, AskAboutAll, Refuse };

    /// What becomes of the next download of `page`.
    Next next(const QObject* page) const
    {
        const int count = m_counts.value(page);
        return count < bearable ? Next::Ask : count == bearable ? Next::AskAboutAll : Next::Refuse;
    }
    void refused(const QObject* page) { ++m_counts[page]; }
    void forget(const QObject* page) { m_counts.remove(page); }

private:
    /// Refusals in a row that pages may go on asking after.
    static constexpr int bearable = 2;

    QHash<const QObject*, int> m_counts;
};
