#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace lumivane {

/// The visible picture of a panel: in its own size, or stretched over the whole widget.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    void setPicture(const QImage& picture, bool stretched);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void stretchToWidget();

    QImage m_picture;
    bool m_stretched = false;
    QPixmap m_shown; ///< the picture as painted, in pixels of the screen
};

} // namespace lumivane
