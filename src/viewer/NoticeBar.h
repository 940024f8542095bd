#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace lumivane {

/// A bar across a window that tells something which needs no answer, with at most one thing to do about it.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Without an action text there is only the button that dismisses the bar.
    void tell(const QString& text, const QString& actionText = QString());
    QString text() const;

Q_SIGNALS:
    void actionRequested();

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyIcon();

    QLabel* m_icon;
    QLabel* m_text;
    QPushButton* m_action;
    QPushButton* m_dismiss;
};

} // namespace lumivane
