#include "engine/EngineVersion.h"

#include <QtWebEngineCore/qtwebenginecoreglobal.h>

std::string engineVersionText()
{
    using namespace std::string_literals;
    return "Qt WebEngine "s + qWebEngineVersion() + ", Chromium " + qWebEngineChromiumVersion() +
           "\nSicherheitskorrekturen bis Chromium " + qWebEngineChromiumSecurityPatchVersion() +
           "\n";
}
