#include "browser/AddressProposals.h"

#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {
constexpr std::size_t proposalsAtMost = 8;

/// Longer titles are a page's mischief.
constexpr qsizetype titleAtMost = 1000;
} // namespace

KnownAddresses::KnownAddresses(std::vector<KnownAddress> bestFirst) : m_known(std::move(bestFirst))
{
    m_texts.reserve(m_known.size());
    for (KnownAddress& one : m_known) {
        one.title.truncate(titleAtMost);
        m_texts.add({one.title, one.address});
    }
}

/// Looks for the longest word in all texts at once, and for the others only where it is.
class ProposalSearch {
public:
    explicit ProposalSearch(const QString& typed)
    {
        for (const QString& word : typed.simplified().split(u' ', Qt::SkipEmptyParts))
            m_words.push_back(foldedText(word));
        std::sort(m_words.begin(), m_words.end(),
                  [](const QByteArray& a, const QByteArray& b) { return a.size() > b.size(); });
    }

    void lookIn(const KnownAddresses& list)
    {
        if (m_words.empty())
            return;
        const SearchedTexts& texts = list.m_texts;
        for (std::size_t i = texts.find(m_words.front(), 0);
             i != texts.count() && m_found.size() < proposalsAtMost;
             i = texts.find(m_words.front(), i + 1)) {
            const auto isThere = [&texts, i](const QByteArray& word) { return texts.has(i, word); };
            if (std::all_of(m_words.begin() + 1, m_words.end(), isThere))
                take(list.m_known[i]);
        }
    }

    std::vector<KnownAddress> result() && { return std::move(m_found); }

private:
    void take(const KnownAddress& one)
    {
        const bool isThere =
            std::any_of(m_found.begin(), m_found.end(),
                        [&one](const KnownAddress& other) { return other.address == one.address; });
        if (!isThere)
            m_found.push_back(one);
    }

    std::vector<QByteArray> m_words; ///< the longest first
    std::vector<KnownAddress> m_found;
};

std::vector<KnownAddress> proposalsFor(const QString& typed,
                                       std::initializer_list<const KnownAddresses*> lists)
{
    ProposalSearch search(typed);
    for (const KnownAddresses* list : lists)
        search.lookIn(*list);
    return std::move(search).result();
}
