#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;
class QToolButton;

namespace lumivane {

/// The bar in which a user types what to find. It finds nothing itself.
class FindBar : public QFrame
{
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    void open();
    QString text() const;
    /// Tells whether the last search had a hit; an empty remark tells nothing.
    void showOutcome(bool found, const QString& remark);

Q_SIGNALS:
    void findRequested(bool forward);
    void textEdited();
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void close();
    void applyIcons();

    QLineEdit* m_text;
    QLabel* m_remark;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;
};

} // namespace lumivane
