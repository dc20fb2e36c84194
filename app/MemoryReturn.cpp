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
    const auto wait = qOverload<>(&QTimer::start);
    connect(&frame, &MDIForm1::browserAdded, &m_quiet, [this, wait](frmBrowser& window) {
        connect(&window, &frmBrowser::pageChanged, &m_quiet, wait);
        connect(&window, &QObject::destroyed, &m_quiet, wait);
    });
#ifdef __GLIBC__
    connect(&m_quiet, &QTimer::timeout, this, [] { ::malloc_trim(0); });
#endif
}
