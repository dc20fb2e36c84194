#include "browser/services/NoticeWindow.h"

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

void NoticeWindow::appear(int others)
{
    adjustSize();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint corner = screen.bottomRight() - QPoint(margin, margin);
    move(corner - QPoint(width(), height() + others * (height() + margin)));
    show();
    QTimer::singleShot(lifeTime, this, &QWidget::close);
}

void NoticeWindow::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    emit clicked();
    close();
}
