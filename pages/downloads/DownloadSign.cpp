#include "pages/downloads/DownloadSign.h"

#include "pages/downloads/DownloadTable.h"

#include <algorithm>

using namespace Qt::StringLiterals;

DownloadSign::DownloadSign(const DownloadTable& table) : m_table(table)
{
    setObjectName(u"downloadSign"_s);
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setFocusPolicy(Qt::NoFocus); // a click leaves the keys where they are
    setToolTip(u"Zeigt die Downloads (Strg+J)"_s);
    hide();
    connect(&table, &DownloadTable::dataChanged, this, &DownloadSign::showSummary);
    connect(&table, &DownloadTable::rowsInserted, this, &DownloadSign::showSummary);
    connect(&table, &DownloadTable::rowsRemoved, this, &DownloadSign::showSummary);
    showSummary();
}

QSize DownloadSign::sizeHint() const
{
    const QString count = text().section(u',', 0, 0);
    const int letters = std::max(fontMetrics().horizontalAdvance(text()),
                                 fontMetrics().horizontalAdvance(count + u", 100 %"_s));
    return {letters + fontMetrics().height(), fontMetrics().height()};
}

void DownloadSign::showSummary()
{
    const QString summary = m_table.summary();
    if (summary != text()) {
        setText(summary);
        setAccessibleName(summary);
    }
    setVisible(!summary.isEmpty());
}
