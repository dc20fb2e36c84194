#include "browser/AddressProposals.h"

#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {
constexpr std::size_t proposalsAtMost = 8;

/// Longer titles are a page's mischief.
constexpr qsizetype titleAtMost = 1000;

/// The text without regard to case, in UTF-8. Most texts are ASCII and are folded here: there
/// may be 65,000 of them when the line gets the focus.
QByteArray folded(const QString& text)
{
    const bool isAscii =
        std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
    if (!isAscii)
        return text.toCaseFolded().toUtf8();
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), bytes.begin(), [](QChar unit) {
        const char16_t code = unit.unicode();
        return static_cast<char>(code >= u'A' && code <= u'Z' ? code | 0x20U : code);
    });
    return bytes;
}

/// The first place of `word` from `begin` on; `end` if there is none. Looks at whole blocks
/// for its first and last byte, which the processor compares side by side: faster than
/// the C library, which matters for a word that is nowhere in 16 MB.
const char* found(const char* begin, const char* end, const QByteArray& word)
{
    constexpr std::ptrdiff_t block = 64;
    const char first = word.front();
    const char last = word.back();
    const std::ptrdiff_t apart = word.size() - 1;
    const char* at = begin;
    for (; end - at >= block + apart; at += block) {
        unsigned char isMaybeHere = 0;
        for (std::ptrdiff_t i = 0; i < block; ++i)
            isMaybeHere |= static_cast<unsigned char>((at[i] == first) & (at[i + apart] == last));
        if (isMaybeHere == 0)
            continue;
        for (const char* place = at; place != at + block; ++place)
            if (*place == first && std::equal(word.begin(), word.end(), place))
                return place;
    }
    return std::search(at, end, word.begin(), word.end());
}
} // namespace

KnownAddresses::KnownAddresses(std::vector<KnownAddress> bestFirst) : m_known(std::move(bestFirst))
{
    m_ends.reserve(m_known.size());
    for (KnownAddress& one : m_known) {
        one.title.truncate(titleAtMost);
        // No word has a tab or a line break, so none is found across two texts.
        m_texts += folded(one.title) + '\t' + folded(one.address) + '\n';
        m_ends.push_back(m_texts.size());
    }
}

/// Looks for the longest word in all texts at once, and for the others only where it is.
class ProposalSearch {
public:
    explicit ProposalSearch(const QString& typed)
    {
        for (const QString& word : typed.simplified().split(u' ', Qt::SkipEmptyParts))
            m_words.push_back(folded(word));
        std::sort(m_words.begin(), m_words.end(),
                  [](const QByteArray& a, const QByteArray& b) { return a.size() > b.size(); });
    }

    void lookIn(const KnownAddresses& list)
    {
        if (m_words.empty())
            return;
        const char* const begin = list.m_texts.constBegin();
        const char* const end = list.m_texts.constEnd();
        const char* at = found(begin, end, m_words.front());
        std::size_t which = 0;
        while (at != end && m_found.size() < proposalsAtMost) {
            while (list.m_ends[which] <= at - begin)
                ++which;
            const char* const from = which == 0 ? begin : begin + list.m_ends[which - 1];
            const char* const to = begin + list.m_ends[which];
            if (hasAllWords(from, to))
                take(list.m_known[which]);
            at = found(to, end, m_words.front());
        }
    }

    std::vector<KnownAddress> result() && { return std::move(m_found); }

private:
    bool hasAllWords(const char* from, const char* to) const
    {
        return std::all_of(m_words.begin() + 1, m_words.end(), [from, to](const QByteArray& word) {
            return found(from, to, word) != to;
        });
    }

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
