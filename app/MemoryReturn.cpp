#include "app/MemoryReturn.h"

#include "app/MDIForm1.h"

#include <chrono>
#ifdef __GLIBC__
#include <malloc.h>
#endif

MemoryReturn::MemoryReturn(MDIForm1& frame) : QObject(&frame)
{
    using namespace std::chrono_literals;
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(2s);
    connect(&frame, &MDIForm1::browserAdded, &m_quiet, [this](frmBrowser& window) {
        connect(&window, &frmBrowser::pageChanged, &m_quiet, qOverload<>(&QTimer::start));
    });
    connect(&m_quiet, &QTimer::timeout, this, [this] {
#ifdef __GLIBC__
        ::malloc_trim(0);
#endif
        deleteLater();
    });
}
