#pragma once

#include <QWidget>

class QSlider;
class QToolButton;

namespace lumivane {

/// Buttons and a slider for the zoom, for the status bar.
class ZoomControl : public QWidget
{
    Q_OBJECT

public:
    explicit ZoomControl(QWidget* parent = nullptr);
    void setZoom(int percent);

    /// The next of the customary steps above or below.
    static int nextStep(int percent, bool larger);

Q_SIGNALS:
    void zoomRequested(int percent);

private:
    QToolButton* button(const QString& objectName, const QString& text, const QString& hint);

    int m_percent = 100;
    QSlider* m_slider;
    QToolButton* m_reset;
};

} // namespace lumivane
