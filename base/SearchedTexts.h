#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <initializer_list>
#include <vector>

/// `text` as it is searched for: without regard to case, in UTF-8.
QByteArray foldedText(const QString& text);

/// Texts that are searched at every key that is typed: all of them in one block of memory,
/// without regard to case. Each entry has a number, from 0 on, and may consist of several texts.
/// No word is found across two texts, as long as it has no line break.
class SearchedTexts {
public:
    void reserve(std::size_t entries) { m_ends.reserve(entries); }
    void add(std::initializer_list<QString> texts);
    std::size_t count() const { return m_ends.size(); }

    /// The first entry from number `from` on that has `word`, which is folded and not empty;
    /// `count()` if there is none.
    std::size_t find(const QByteArray& word, std::size_t from) const;
    bool has(std::size_t entry, const QByteArray& word) const;

private:
    const char* begin(std::size_t entry) const;

    QByteArray m_texts;
    std::vector<qsizetype> m_ends; ///< where each entry ends
};
