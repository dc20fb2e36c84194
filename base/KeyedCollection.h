#pragma once

#include "base/Errors.h"

#include <QHash>

#include <utility>
#include <vector>

/// An ordered list of references in which an element may also be found by a
/// unique, case-sensitive text key. Positions count from 1. An element without
/// a key has the empty text as its key.
///
/// `Ref` is what the list holds: a raw pointer where somebody else owns the
/// elements, a shared pointer where the list keeps them alive.
///
/// Errors: DuplicateKeyError when a key is taken, NotFoundError for a position
/// or key that is not there. A failing call leaves the list as it was.
template <typename Ref>
class KeyedCollection {
public:
    int Count() const { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }
    bool Contains(const QString& key) const { return m_byKey.contains(key); }

    /// Makes room for `count` elements in all; only saves time.
    void reserve(int count)
    {
        m_items.reserve(static_cast<std::size_t>(count));
        m_keys.reserve(static_cast<std::size_t>(count));
        m_byKey.reserve(count);
    }

    void Add(Ref item, const QString& key = {}) { insert(m_items.size(), std::move(item), key); }
    void AddBefore(int position, Ref item, const QString& key = {})
    {
        insert(slot(position), std::move(item), key);
    }
    void AddAfter(int position, Ref item, const QString& key = {})
    {
        insert(slot(position) + 1, std::move(item), key);
    }

    const Ref& Item(int position) const { return m_items[slot(position)]; }
    const Ref& Item(const QString& key) const
    {
        const auto found = m_byKey.constFind(key);
        if (found == m_byKey.constEnd())
            throw NotFoundError(key);
        return found.value();
    }
    const QString& Key(int position) const { return m_keys[slot(position)]; }
    int Position(const QString& key) const
    {
        if (!m_byKey.contains(key))
            throw NotFoundError(key);
        std::size_t i = 0;
        while (m_keys[i] != key)
            ++i;
        return static_cast<int>(i) + 1;
    }

    void Remove(int position)
    {
        const auto i = static_cast<std::ptrdiff_t>(slot(position));
        m_byKey.remove(*(m_keys.begin() + i));
        m_keys.erase(m_keys.begin() + i);
        m_items.erase(m_items.begin() + i);
    }
    void Remove(const QString& key) { Remove(Position(key)); }

    /// Walks the references in order. Copy the collection first if it can
    /// change during the walk.
    auto begin() const { return m_items.cbegin(); }
    auto end() const { return m_items.cend(); }

private:
    std::size_t slot(int position) const
    {
        if (position < 1 || position > Count())
            throw NotFoundError(QString::number(position));
        return static_cast<std::size_t>(position) - 1;
    }

    void insert(std::size_t at, Ref item, const QString& key)
    {
        if (!key.isEmpty()) {
            if (m_byKey.contains(key))
                throw DuplicateKeyError(key);
            m_byKey.insert(key, item);
        }
        const auto offset = static_cast<std::ptrdiff_t>(at);
        m_keys.insert(m_keys.begin() + offset, key);
        m_items.insert(m_items.begin() + offset, std::move(item));
    }

    // Items and keys lie side by side: a walk over a long list touches no keys.
    std::vector<Ref> m_items;
    std::vector<QString> m_keys;
    QHash<QString, Ref> m_byKey;
};
