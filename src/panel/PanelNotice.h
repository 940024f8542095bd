#pragma once

#include <QLabel>

namespace lumivane {

/// The strip of a panel that says what is amiss with its picture. It takes as many lines as it needs, up to a few; the
/// rest of a longer text is cut off.
class PanelNotice : public QLabel
{
    Q_OBJECT

public:
    explicit PanelNotice(QWidget* parent);

    /// Nothing to say hides it.
    void setNotice(const QString& text);
    /// That it needs at this width; 0 while it is hidden.
    int heightFor(int width) const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool fits(const QString& text, const QSize& room) const;
    void showWhatFits();

    QString m_notice;
};

} // namespace lumivane
