#pragma once

#include "browser/AddressProposals.h"

#include <QObject>

/// Where the address lines get what they propose: all that the program knows. One for all
/// windows.
class ProposalSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The user has come to an address line: makes ready what is known by now, so that no key
    /// has to wait for it.
    virtual void prepare() = 0;
    /// What is proposed for a text; `ofWindow` is the line's own list.
    virtual std::vector<KnownAddress> proposals(const QString& typed,
                                                const KnownAddresses& ofWindow) = 0;

signals:
    /// More is known than at the last call of `proposals`.
    void grown();
};
