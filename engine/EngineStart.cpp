#include "engine/EngineStart.h"

#include "base/WindowParts.h"
#include "engine/page/SessionBus.h"
#include "pages/viewing/SpellDictionaries.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* flagsVariable = "QTWEBENGINE_CHROMIUM_FLAGS";

void addEngineFlag(const QByteArray& name, const QByteArray& value = {})
{
    const QByteArray present = qgetenv(flagsVariable);
    if (present.contains(name))
        return;
    const QByteArray flag = value.isEmpty() ? name : name + '=' + value;
    qputenv(flagsVariable, present.isEmpty() ? flag : present + ' ' + flag);
}

/// Sets a switch of the part of the engine that draws pages, as "name=value"; it holds
/// whatever the settings of a profile say.
void addPageSwitch(const QByteArray& nameAndValue)
{
    // The engine reads only the last list of such switches, so this one joins it.
    const QByteArray list = "--blink-settings";
    QByteArray present = qgetenv(flagsVariable);
    const qsizetype place = present.lastIndexOf(list + '=');
    if (place < 0)
        addEngineFlag(list, nameAndValue);
    else
        qputenv(flagsVariable, present.insert(place + list.size() + 1, nameAndValue + ','));
}

bool isSet(const QDBusConnection& bus, const QString& property)
{
    constexpr int longestWait = 500; // milliseconds
    auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                   u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.a11y.Status"_s << property;
    const QDBusReply<QVariant> answer = bus.call(question, QDBus::Block, longestWait);
    return answer.isValid() && answer.value().toBool();
}

/// Asks what Qt itself asks to find out, but Qt knows it only after the engine has started.
bool areAssistiveToolsInUse()
{
    if (qEnvironmentVariableIntValue("QT_LINUX_ACCESSIBILITY_ALWAYS_ON") > 0 ||
        !qEnvironmentVariableIsEmpty("AT_SPI_BUS_ADDRESS"))
        return true;
    // Where no bus is running, nobody would be on one that is started for the question.
    const std::optional<QDBusConnection> bus = sessionBus();
    return bus && bus->interface()->isServiceRegistered(u"org.a11y.Bus"_s) &&
           (isSet(*bus, u"IsEnabled"_s) || isSet(*bus, u"ScreenReaderEnabled"_s));
}

} // namespace

void prepareEngineStart()
{
    announceDictionaries();
    startNoSessionBus();
    // Without the flag a screen reader finds an empty document in the place of a page (seen
    // with Qt 6.4). Before it is removed, look at a page with assistive tools running.
    if (areAssistiveToolsInUse())
        addEngineFlag("--force-renderer-accessibility");
    // The engine does not ask Qt for the colours of the desktop (seen with Qt 6.4), so that
    // `prefers-color-scheme` says "light" to all pages. 0 is the engine's number for dark.
    // What the desktop changes later reaches the pages of the next run only.
    if (isDark(QGuiApplication::palette()))
        addPageSwitch("preferredColorScheme=0");
    // A local page shows its pictures and styles, but reads no other local file. The setting
    // LocalContentCanAccessFileUrls, when it is off, takes the pictures and styles away, too
    // (seen with Qt 6.4). So it stays on, and the part that draws the pages is told instead.
    addPageSwitch("allowFileAccessFromFileURLs=false");
    // The engine would start up to 82 processes for pages, depending on the memory of the machine
    // (6.4). Beyond this limit pages of one site share them, which saves a quarter of what a
    // hundred windows take.
    addEngineFlag("--renderer-process-limit", "40");
}
