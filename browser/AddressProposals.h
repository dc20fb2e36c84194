#pragma once

#include "base/SearchedTexts.h"

#include <QString>

#include <initializer_list>
#include <vector>

/// An address that can be proposed, and the title of its page where that is known.
struct KnownAddress {
    QString address;
    QString title;
};

/// Addresses, the best first, made ready for being searched at every key. Values that never
/// change: any thread may make them.
class KnownAddresses {
public:
    KnownAddresses() = default;
    explicit KnownAddresses(std::vector<KnownAddress> bestFirst);

private:
    friend class ProposalSearch;

    std::vector<KnownAddress> m_known;
    SearchedTexts m_texts; ///< title and address of each
};

/// What is proposed for a text that is being typed: addresses that have all of its words in
/// their titles or in themselves, without regard to case. Each comes once, and those of an
/// earlier list first; at most eight. None for a text without words.
std::vector<KnownAddress> proposalsFor(const QString& typed,
                                       std::initializer_list<const KnownAddresses*> lists);
