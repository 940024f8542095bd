#include "panel/PictureBox.h"

#include <QPainter>

namespace lumivane {

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

void PictureBox::setPicture(const QImage& picture, bool stretched)
{
    const bool same = m_stretched == stretched && m_picture.cacheKey() == picture.cacheKey();
    m_picture = picture;
    m_stretched = stretched;
    if (!same || stretched)
        m_shown = QPixmap();
    update();
}

void PictureBox::stretchToWidget()
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_shown.size() == pixels)
        return;
    // Halving a picture with plain filtering would drop thin lines; this averages.
    m_shown = QPixmap::fromImage(m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    m_shown.setDevicePixelRatio(devicePixelRatioF());
}

void PictureBox::paintEvent(QPaintEvent*)
{
    if (m_picture.isNull())
        return;
    if (m_stretched)
        stretchToWidget();
    else if (m_shown.isNull())
        m_shown = QPixmap::fromImage(m_picture);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(0, 0, m_shown);
}

} // namespace lumivane
