#include "browser/EngineFlags.h"

#include <QtGlobal>

void addEngineFlag(const QByteArray& name, const QByteArray& value)
{
    constexpr const char* variable = "QTWEBENGINE_CHROMIUM_FLAGS";
    const QByteArray present = qgetenv(variable);
    if (present.contains(name))
        return;
    const QByteArray flag = value.isEmpty() ? name : name + '=' + value;
    qputenv(variable, present.isEmpty() ? flag : present + ' ' + flag);
}
