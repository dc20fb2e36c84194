#pragma once

#include <QStringView>

#include <vector>

/// Positions (from 0) in a list that itself stays as it is.
using RowOrder = std::vector<std::size_t>;

/// Puts the positions in `order` into the ascending order, by character code,
/// of the texts they stand for; positions of equal texts keep their order. With
/// Qt::CaseInsensitive each character counts as its case-folded one.
///
/// Made for addresses, which are long and begin alike: it looks at each
/// character a few times only, where comparing whole texts in pairs reads the
/// common beginnings over and over.
void sortByText(RowOrder& order, const std::vector<QStringView>& texts,
                Qt::CaseSensitivity sensitivity);
