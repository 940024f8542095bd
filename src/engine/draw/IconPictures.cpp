#include "engine/draw/IconPictures.h"

#include <QPainter>
#include <QPainterPath>

namespace lumivane::engine {

namespace {

struct Paint
{
    QRgb fill, edge;
};

constexpr Paint red{0xfff78b8e, 0xffac433d};
constexpr Paint amber{0xffffe583, 0xfff0a030};
constexpr Paint green{0xff63c27b, 0xff469452};
constexpr Paint gray{0xffa6a6a6, 0xff595959};
constexpr Paint black{0xff404040, 0xff202020};
constexpr Paint pink{0xfff7a8ab, 0xffc07a7c};
constexpr Paint gold{0xffffc83c, 0xffbf8f00};
constexpr Paint threeLights[] = {red, amber, green};
constexpr Paint arrowColors[] = {{0xffff979f, 0xffaa4137}, {0xffffeb7c, 0xffbf7400}, {0xff6fca88, 0xff2b6422}};

/// The points of icons lie in a square from 0 to 16, y downwards.
QPolygonF points(std::initializer_list<QPointF> list)
{
    return QPolygonF(list);
}

class IconPainter
{
public:
    explicit IconPainter(QPainter& painter) : m_painter(painter) {}

    void paint(const Icon& icon);

private:
    void use(const Paint& paint, double width = 0.8)
    {
        m_painter.setBrush(QColor::fromRgb(paint.fill));
        m_painter.setPen(QPen(QColor::fromRgb(paint.edge), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    }
    void stroke(QRgb color, double width)
    {
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(QPen(QColor::fromRgb(color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    void ball(const Paint& paint)
    {
        use(paint);
        m_painter.drawEllipse(QPointF(8, 8), 6.2, 6.2);
    }
    /// Of 0 up, of 180 down.
    void arrow(double degrees, const Paint& paint)
    {
        use(paint);
        m_painter.save();
        m_painter.translate(8, 8);
        m_painter.rotate(degrees);
        m_painter.drawPolygon(
            points({{0, -6.5}, {6, -0.3}, {2.6, -0.3}, {2.6, 6.3}, {-2.6, 6.3}, {-2.6, -0.3}, {-6, -0.3}}));
        m_painter.restore();
    }
    void flag(const Paint& paint)
    {
        stroke(0xff595959, 1.2);
        m_painter.drawLine(QPointF(3.5, 1.8), QPointF(3.5, 14.5));
        use(paint);
        m_painter.drawPolygon(points({{4.2, 2}, {13.5, 4.4}, {13.5, 8.2}, {4.2, 9.5}}));
    }
    void cross(QRgb color, double from, double to, double width)
    {
        stroke(color, width);
        m_painter.drawLine(QPointF(from, from), QPointF(to, to));
        m_painter.drawLine(QPointF(from, to), QPointF(to, from));
    }
    void mark(QRgb color, double width)
    {
        stroke(color, width);
        m_painter.drawLine(QPointF(8, 3.8), QPointF(8, 8.8));
        m_painter.drawPoint(QPointF(8, 11.9));
    }
    void tick(QRgb color, double width)
    {
        stroke(color, width);
        m_painter.drawPolyline(points({{4.3, 8.4}, {7, 11.3}, {11.7, 5}}));
    }
    void sign(int index);
    void symbol(int index, bool bare);
    void rating(int lit, int columns);
    void quarter(int filled);
    void star(int index);
    void triangle(int index);
    void boxes(int filled);

    QPainter& m_painter;
};

void IconPainter::sign(int index)
{
    if (index == 2)
        return ball(green);
    use(threeLights[index]);
    if (index == 0)
        m_painter.drawPolygon(points({{8, 1.5}, {14.5, 8}, {8, 14.5}, {1.5, 8}}));
    else
        m_painter.drawPolygon(points({{8, 2}, {14.5, 13.8}, {1.5, 13.8}}));
}

void IconPainter::symbol(int index, bool bare)
{
    constexpr QRgb bareColors[] = {0xffe77d83, 0xfff6a151, 0xff408f4a};
    constexpr Paint strong[] = {{0xffe0565b, 0xffac433d}, {0xfff0b040, 0xffb87a10}, {0xff4ea85f, 0xff357a43}};
    if (!bare)
        ball(strong[index]);
    const QRgb color = bare ? bareColors[index] : 0xffffffff;
    const double width = bare ? 2.6 : 1.9;
    if (index == 0)
        bare ? cross(color, 3.5, 12.5, width) : cross(color, 5.5, 10.5, width);
    else if (index == 1)
        mark(color, width);
    else
        tick(color, width);
}

/// Rising columns, of which some are lit.
void IconPainter::rating(int lit, int columns)
{
    m_painter.setPen(Qt::NoPen);
    const double slot = 14.0 / columns;
    for (int i = 0; i < columns; ++i) {
        const double height = 12.0 * (i + 1) / columns;
        m_painter.setBrush(QColor::fromRgb(i < lit ? 0xff4472c4 : 0xffd0d0d0));
        m_painter.drawRect(QRectF(1 + i * slot, 14 - height, slot - 0.8, height));
    }
}

void IconPainter::quarter(int filled)
{
    m_painter.setBrush(Qt::white);
    m_painter.setPen(QPen(QColor::fromRgb(0xff595959), 1));
    m_painter.drawEllipse(QPointF(8, 8), 6, 6);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(QColor::fromRgb(black.fill));
    constexpr int sixteenths = 16; // of a degree
    m_painter.drawPie(QRectF(2, 2, 12, 12), 90 * sixteenths, -90 * filled * sixteenths);
}

void IconPainter::star(int index)
{
    QPainterPath path;
    for (int i = 0; i < 10; ++i) {
        const double radius = i % 2 ? 2.9 : 7.0;
        QTransform turned;
        turned.translate(8, 8.5).rotate(36.0 * i);
        const QPointF point = turned.map(QPointF(0, -radius));
        i ? path.lineTo(point) : path.moveTo(point);
    }
    path.closeSubpath();
    m_painter.fillPath(path, Qt::white);
    m_painter.save();
    m_painter.setClipRect(QRectF(0, 0, 8.0 * index, 16), Qt::IntersectClip);
    m_painter.fillPath(path, QColor::fromRgb(gold.fill));
    m_painter.restore();
    stroke(gold.edge, 0.9);
    m_painter.drawPath(path);
}

void IconPainter::triangle(int index)
{
    use(threeLights[index]);
    if (index == 0)
        m_painter.drawPolygon(points({{2, 4.5}, {14, 4.5}, {8, 11.5}}));
    else if (index == 1)
        m_painter.drawRect(QRectF(2, 6, 12, 4));
    else
        m_painter.drawPolygon(points({{2, 11.5}, {14, 11.5}, {8, 4.5}}));
}

void IconPainter::boxes(int filled)
{
    m_painter.setPen(Qt::NoPen);
    constexpr QPointF corners[] = {{2, 8.4}, {8.4, 8.4}, {2, 2}, {8.4, 2}};
    for (int i = 0; i < 4; ++i) {
        m_painter.setBrush(QColor::fromRgb(i < filled ? 0xff4472c4 : 0xffd0d0d0));
        m_painter.drawRect(QRectF(corners[i], QSizeF(5.6, 5.6)));
    }
}

void IconPainter::paint(const Icon& icon)
{
    constexpr double threeWays[] = {180, 90, 0}, fourWays[] = {180, 135, 45, 0}, fiveWays[] = {180, 135, 90, 45, 0};
    constexpr int fourColors[] = {0, 1, 1, 2}, fiveColors[] = {0, 1, 1, 1, 2};
    constexpr Paint fourLights[] = {black, red, amber, green}, redToBlack[] = {black, gray, pink, red};
    const int i = icon.index;
    switch (icon.set) {
    case IconSet::Arrows3:
        return arrow(threeWays[i], arrowColors[i]);
    case IconSet::Arrows4:
        return arrow(fourWays[i], arrowColors[fourColors[i]]);
    case IconSet::Arrows5:
        return arrow(fiveWays[i], arrowColors[fiveColors[i]]);
    case IconSet::ArrowsGray3:
        return arrow(threeWays[i], gray);
    case IconSet::ArrowsGray4:
        return arrow(fourWays[i], gray);
    case IconSet::ArrowsGray5:
        return arrow(fiveWays[i], gray);
    case IconSet::Flags3:
        return flag(threeLights[i]);
    case IconSet::TrafficLights3:
        return ball(threeLights[i]);
    case IconSet::RimmedTrafficLights3:
        use(black);
        m_painter.drawRoundedRect(QRectF(1, 1, 14, 14), 3, 3);
        return ball(threeLights[i]);
    case IconSet::TrafficLights4:
        return ball(fourLights[i]);
    case IconSet::RedToBlack4:
        return ball(redToBlack[i]);
    case IconSet::Signs3:
        return sign(i);
    case IconSet::Symbols3:
        return symbol(i, false);
    case IconSet::BareSymbols3:
        return symbol(i, true);
    case IconSet::Rating4:
        return rating(i + 1, 4);
    case IconSet::Rating5:
        return rating(i, 4);
    case IconSet::Quarters5:
        return quarter(i);
    case IconSet::Stars3:
        return star(i);
    case IconSet::Triangles3:
        return triangle(i);
    case IconSet::Boxes5:
        return boxes(i);
    case IconSet::NoIcons:
        return;
    }
}

} // namespace

void paintIcon(QPainter& painter, const QRectF& square, const Icon& icon)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / 16, square.height() / 16);
    IconPainter(painter).paint(icon);
    painter.restore();
}

} // namespace lumivane::engine
