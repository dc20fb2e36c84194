#pragma once

#include <QToolButton>

class DownloadTable;

/// Says in the status bar how far the downloads are; hidden while none is open.
class DownloadSign : public QToolButton {
    Q_OBJECT
public:
    /// `table` outlives it.
    explicit DownloadSign(const DownloadTable& table);

    /// As high as its letters, so that the bar keeps its height, and wide enough for every
    /// percentage.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void showSummary();

    const DownloadTable& m_table;
};
