#include "pages/asking/NotificationWindow.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int windowWidth = 320;
constexpr int margin = 12;
constexpr std::chrono::seconds lifeTime(8);

QLabel* line(const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(text);
    return label;
}

} // namespace

NotificationWindow::NotificationWindow(const QString& site, const QString& title,
                                       const QString& text)
    : QFrame(nullptr, Qt::ToolTip | Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(u"NotificationWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(u"Mitteilung von "_s + site);
    auto* const layout = new QVBoxLayout(this);
    QLabel* const headline = line(title, this);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    layout->addWidget(headline);
    layout->addWidget(line(text, this));
    layout->addWidget(line(site, this));
    setFixedWidth(windowWidth);
}

void NotificationWindow::appear(const QList<QRect>& others)
{
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), size());
    place.moveBottomRight(screen.bottomRight() - QPoint(margin, margin));
    // Moved above one window, it can come to lie over another: as many rounds as there are
    // others settle that.
    for (qsizetype round = 0; round < others.size(); ++round) {
        for (const QRect& other : others)
            if (other.intersects(place))
                place.moveBottom(other.top() - margin);
    }
    move(place.topLeft());
    show();
    QTimer::singleShot(lifeTime, this, &QWidget::close);
}

void NotificationWindow::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    emit clicked();
    close();
}
