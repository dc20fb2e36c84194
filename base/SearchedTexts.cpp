#include "base/SearchedTexts.h"

#include <algorithm>

namespace {

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

QByteArray foldedText(const QString& text)
{
    // Most texts are ASCII and are folded here: there may be 300,000 of them.
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

void SearchedTexts::add(std::initializer_list<QString> texts)
{
    for (const QString& text : texts)
        m_texts += foldedText(text) + '\n';
    m_ends.push_back(m_texts.size());
}

const char* SearchedTexts::begin(std::size_t entry) const
{
    return m_texts.constData() + (entry == 0 ? 0 : m_ends[entry - 1]);
}

std::size_t SearchedTexts::find(const QByteArray& word, std::size_t from) const
{
    if (from >= count())
        return count();
    const char* const end = m_texts.constEnd();
    const char* const at = found(begin(from), end, word);
    if (at == end)
        return count();
    const qsizetype place = at - m_texts.constBegin();
    while (m_ends[from] <= place)
        ++from;
    return from;
}

bool SearchedTexts::has(std::size_t entry, const QByteArray& word) const
{
    const char* const end = m_texts.constData() + m_ends[entry];
    return found(begin(entry), end, word) != end;
}
