#include "pages/asking/NotificationWindow.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int noticeWidth = 320;
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

NoticeWindow::NoticeWindow(const QString& site, const QString& title, const QString& text)
    : QFrame(nullptr, Qt::ToolTip | Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(u"NoticeWindow"_s);
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
    setFixedWidth(noticeWidth);
}

void NoticeWindow::appear(const QList<QRect>& others)
{
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), size());
    place.moveBottomRight(screen.bottomRight() - QPoint(margin, margin));
    // Each one that is in the way lifts it, and there are no more of them than that.
    for (qsizetype lifts = 0; lifts < others.size(); ++lifts) {
        for (const QRect& other : others)
            if (other.intersects(place))
                place.moveBottom(other.top() - margin);
    }
    move(place.topLeft());
    show();
    QTimer::singleShot(lifeTime, this, &QWidget::close);
}

void NoticeWindow::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    emit clicked();
    close();
}
