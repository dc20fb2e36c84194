#include "history/TextOrder.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {
using Bytes = std::string_view;
constexpr std::size_t wordSize = sizeof(quint64);

/// The texts as bytes, one behind the other: one to three bytes for a character
/// code, so that bytes have the order of the codes and most texts get short.
class ByteTexts {
public:
    ByteTexts(const std::vector<QStringView>& texts, Qt::CaseSensitivity sensitivity)
    {
        m_begins.reserve(texts.size() + 1);
        m_begins.push_back(0);
        for (const QStringView text : texts) {
            const std::size_t begin = m_begins.back();
            m_bytes.resize(begin + mostBytes * static_cast<std::size_t>(text.size()));
            char* end = m_bytes.data() + begin;
            for (const QChar c : text)
                end = put(end,
                          sensitivity == Qt::CaseInsensitive ? folded(c.unicode()) : c.unicode());
            m_begins.push_back(static_cast<std::size_t>(end - m_bytes.data()));
        }
    }

    Bytes operator[](std::size_t position) const
    {
        const std::size_t begin = m_begins[position];
        return {m_bytes.data() + begin, m_begins[position + 1] - begin};
    }

private:
    static constexpr std::size_t mostBytes = 3;
    static constexpr char16_t oneByte = 0x80;
    static constexpr char16_t twoBytes = 0x800;

    static char16_t folded(char16_t code)
    {
        if (code >= oneByte)
            return QChar(code).toCaseFolded().unicode();
        return code >= u'A' && code <= u'Z' ? static_cast<char16_t>(code | 0x20U) : code;
    }

    /// Returns the place behind the bytes of `code`.
    static char* put(char* at, char16_t code)
    {
        if (code < oneByte) {
            *at++ = static_cast<char>(code);
            return at;
        }
        if (code < twoBytes) {
            *at++ = static_cast<char>(0xC0U | code >> 6U);
        } else {
            *at++ = static_cast<char>(0xE0U | code >> 12U);
            *at++ = static_cast<char>(0x80U | (code >> 6U & 0x3FU));
        }
        *at++ = static_cast<char>(0x80U | (code & 0x3FU));
        return at;
    }

    std::string m_bytes;
    std::vector<std::size_t> m_begins;
};

/// A text and the eight bytes of it that are being looked at, as a number.
struct Entry {
    quint64 word;
    std::size_t position;
};
using Place = std::vector<Entry>::iterator;

class Sorter {
public:
    explicit Sorter(const ByteTexts& texts) : m_texts(texts) {}

    /// Sorts texts that are equal up to `depth`.
    void sort(Place first, Place last, std::size_t depth) const
    {
        constexpr std::ptrdiff_t few = 12;
        if (last - first <= few || !loadDifferent(first, last, depth)) {
            std::stable_sort(first, last, [this, depth](const Entry& a, const Entry& b) {
                return rest(a, depth) < rest(b, depth);
            });
            return;
        }
        std::stable_sort(first, last,
                         [](const Entry& a, const Entry& b) { return a.word < b.word; });
        while (first != last) {
            const Place same = std::find_if(
                first, last, [word = first->word](const Entry& e) { return e.word != word; });
            sort(first, same, depth + wordSize);
            first = same;
        }
    }

private:
    Bytes rest(const Entry& entry, std::size_t depth) const
    {
        const Bytes text = m_texts[entry.position];
        return text.substr(std::min(depth, text.size()));
    }

    /// The eight bytes from `depth` on; what is missing is zero.
    static quint64 wordAt(Bytes text, std::size_t depth)
    {
        quint64 word = 0;
        if (depth < text.size())
            std::memcpy(&word, text.data() + depth, std::min(wordSize, text.size() - depth));
        return qFromBigEndian(word);
    }

    /// Loads the words at `depth`, or at the first place behind it where they
    /// are not all the same. False when the texts end before they differ.
    bool loadDifferent(Place first, Place last, std::size_t& depth) const
    {
        for (;; depth += wordSize) {
            bool goesOn = false;
            bool same = true;
            for (Place entry = first; entry != last; ++entry) {
                const Bytes text = m_texts[entry->position];
                entry->word = wordAt(text, depth);
                same &= entry->word == first->word;
                goesOn |= text.size() > depth + wordSize;
            }
            if (!same || !goesOn)
                return !same;
        }
    }

    const ByteTexts& m_texts;
};
} // namespace

void sortByText(RowOrder& order, const std::vector<QStringView>& texts,
                Qt::CaseSensitivity sensitivity)
{
    const ByteTexts bytes(texts, sensitivity);
    std::vector<Entry> entries;
    entries.reserve(order.size());
    for (const std::size_t position : order)
        entries.push_back({0, position});
    Sorter(bytes).sort(entries.begin(), entries.end(), 0);
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const Entry& entry) { return entry.position; });
}
