#pragma once

#include "browser/PageSafety.h"

#include <QFrame>

class QLabel;
class QPushButton;
class QVBoxLayout;

/// The pop-up that says in words how safe a page is, and what the user has said about it, each
/// of which can be taken back. It has the keys while it is open; Escape, its button, and a click
/// beside it close it.
class SafetyPanel : public QFrame {
    Q_OBJECT
public:
    /// `sign` is what it opens at, and by whose click.
    explicit SafetyPanel(QWidget* sign);

    void show(const PageSafety& safety);
    /// What it shows changes while it is open. It closes when that is another site's page.
    void change(const PageSafety& safety);

signals:
    void takeBackWanted(const QString& answer);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill(const PageSafety& safety);
    void addAnswer(const PageSafety::Answer& answer);
    void place();

    QWidget* m_sign;
    QString m_site;
    QLabel* m_name;
    QLabel* m_siteLine;
    QLabel* m_sentence;
    QLabel* m_certificate;
    QLabel* m_answersCaption;
    QWidget* m_answers = nullptr;
    QLabel* m_note;
    QVBoxLayout* m_layout;
    QPushButton* m_close;
};
