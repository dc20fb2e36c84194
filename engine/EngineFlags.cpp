#include "engine/EngineFlags.h"

#include <QtGlobal>

namespace {
constexpr const char* variable = "QTWEBENGINE_CHROMIUM_FLAGS";
} // namespace

void addEngineFlag(const QByteArray& name, const QByteArray& value)
{
    const QByteArray present = qgetenv(variable);
    if (present.contains(name))
        return;
    const QByteArray flag = value.isEmpty() ? name : name + '=' + value;
    qputenv(variable, present.isEmpty() ? flag : present + ' ' + flag);
}

void addPageSwitch(const QByteArray& nameAndValue)
{
    // The engine reads the last list of switches only.
    const QByteArray list = "--blink-settings";
    QByteArray present = qgetenv(variable);
    const qsizetype place = present.lastIndexOf(list + '=');
    if (place < 0)
        addEngineFlag(list, nameAndValue);
    else
        qputenv(variable, present.insert(place + list.size() + 1, nameAndValue + ','));
}
