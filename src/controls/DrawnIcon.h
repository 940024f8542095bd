#pragma once

#include <QIconEngine>

namespace lumivane {

/// Draws an icon from a vector drawing, sharp at any scale and in colours that can be read on the palette which holds
/// at that time. The drawings are made for light windows; their few colours have a counterpart each for dark ones.
class DrawnIcon : public QIconEngine
{
public:
    explicit DrawnIcon(QByteArray drawing);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    bool isNull() override;

private:
    const QByteArray m_drawing;
};

} // namespace lumivane
