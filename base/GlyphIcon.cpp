#include "base/GlyphIcon.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPicture>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

/// Draws an icon that was recorded when the program was built (IconRecorder.cpp).
class RecordedIcon : public QIconEngine {
public:
    explicit RecordedIcon(const QString& name) : m_name(name) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    /// Windows that look alike share their pictures.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        const QString key =
            u"icon %1 %2x%3 "_s.arg(m_name).arg(size.width()).arg(size.height()) + kindOf(mode);
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
            picture = finished(drawn(size), mode);
            QPixmapCache::insert(key, picture);
        }
        return picture;
    }

protected:
    QString name() const { return m_name; }

private:
    /// What the pictures of one name and size differ in.
    virtual QString kindOf(QIcon::Mode mode) const = 0;
    virtual QPixmap finished(QPixmap picture, QIcon::Mode mode) const = 0;

    QPixmap drawn(const QSize& size) const
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPicture record;
        if (!record.load(u":/icons/"_s + m_name))
            return picture;
        const QSizeF whole = record.boundingRect().size();
        QPainter painter(&picture);
        painter.scale(size.width() / whole.width(), size.height() / whole.height());
        painter.drawPicture(0, 0, record);
        return picture;
    }

    QString m_name;
};

class GlyphEngine : public RecordedIcon {
public:
    using RecordedIcon::RecordedIcon;

    QIconEngine* clone() const override { return new GlyphEngine(name()); }

private:
    static QColor inkFor(QIcon::Mode mode)
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        return QGuiApplication::palette().color(group, QPalette::ButtonText);
    }

    QString kindOf(QIcon::Mode mode) const override { return inkFor(mode).name(); }

    QPixmap finished(QPixmap picture, QIcon::Mode mode) const override
    {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), QColor(inkFor(mode).rgb()));
        return picture;
    }
};

class ColouredEngine : public RecordedIcon {
public:
    using RecordedIcon::RecordedIcon;

    QIconEngine* clone() const override { return new ColouredEngine(name()); }

private:
    QString kindOf(QIcon::Mode mode) const override
    {
        const QString palette = QString::number(QGuiApplication::palette().cacheKey());
        return mode == QIcon::Normal ? QString() : u"%1 %2"_s.arg(mode).arg(palette);
    }

    QPixmap finished(QPixmap picture, QIcon::Mode mode) const override
    {
        if (mode == QIcon::Normal)
            return picture;
        QStyleOption option;
        option.palette = QGuiApplication::palette();
        return QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }
};

} // namespace

QIcon glyphIcon(const QString& name)
{
    return QIcon(new GlyphEngine(u"glyphs/"_s + name));
}

QIcon colouredIcon(const QString& name)
{
    return QIcon(new ColouredEngine(name));
}
