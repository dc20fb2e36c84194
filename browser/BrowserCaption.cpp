#include "browser/BrowserCaption.h"

#include "browser/PageTexts.h"
#include "browser/SoundMark.h"

#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

BrowserCaption::BrowserCaption(QWidget& window, QIcon icon, bool isPrivate)
    : m_window(window), m_icon(std::move(icon)), m_isPrivate(isPrivate)
{
    m_window.setWindowIcon(m_icon);
    say({});
}

void BrowserCaption::say(const QString& text)
{
    const QString caption = windowCaption(text);
    m_window.setWindowTitle(m_isPrivate ? privateCaption(caption) : caption);
}

void BrowserCaption::showIcon(const QIcon& site)
{
    if (site.isNull() && m_site.isNull())
        return;
    m_site = site;
    updateIcon();
}

void BrowserCaption::updateIcon()
{
    m_window.setWindowIcon(withSoundMark(m_site.isNull() ? m_icon : m_site, m_sound));
}

void BrowserCaption::showSound(EngineControl::Sound sound)
{
    if (std::exchange(m_sound, sound) == sound)
        return;
    updateIcon();
    const QString text = sound == EngineControl::Sound::Playing    ? u"Die Seite spielt Ton."_s
                         : sound == EngineControl::Sound::Silenced ? u"Der Ton ist aus."_s
                                                                   : QString();
    m_window.setAccessibleDescription(text);
}
