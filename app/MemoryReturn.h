#pragma once

#include <QTimer>

class MDIForm1;

/// Gives the system back, once, what the start has left over when its first page has come and
/// nothing more has for a while. Not later: in the heap of a frame that had hundreds of windows
/// that takes a second. Belongs to the frame.
class MemoryReturn : public QObject {
public:
    explicit MemoryReturn(MDIForm1& frame);

private:
    QTimer m_quiet;
};
