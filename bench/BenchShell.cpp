#include "bench/BenchShell.h"

#include <QUrl>

#include <algorithm>

BenchShell::BenchShell(const QString& folder, std::chrono::milliseconds sleepAfter)
    : m_engines(
          folder + QStringLiteral("/data"), folder + QStringLiteral("/cache"),
          [](const QString& typed) { return QUrl(typed); }, sleepAfter),
      m_module(folder, m_prompt, m_starter, {m_engines.factory(), [] { return QStringList(); }})
{
    m_engines.serve(frame(), &frame());
    frame().addEndCheck([this] { return m_engines.mayEnd(); });
}

BenchShell::~BenchShell()
{
    m_engines.endService();
}

bool isBusy(const MDIForm1& frame)
{
    return std::any_of(frame.Browser().begin(), frame.Browser().end(),
                       [](const frmBrowser* window) { return window->brwWebBrowser()->Busy(); });
}
