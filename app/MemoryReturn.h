#pragma once

#include <QTimer>

class MDIForm1;

/// Gives the system back what a page's coming or a window's going has left over: the allocator
/// keeps it otherwise, and a frame that had many windows stays large. Belongs to the frame.
class MemoryReturn : public QObject {
public:
    explicit MemoryReturn(MDIForm1& frame);

private:
    QTimer m_quiet; ///< until nothing has come or gone for a while
};
